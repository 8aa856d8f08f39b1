#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ml::rawconvert {

/// Stands for "as shot" in the values of the development engine.
inline constexpr int kAsShot = -10;
/// The white balance of a custom point, and what stands for the balance that the last render took.
inline constexpr int kCustomWhiteBalance = -1;
/// The sharpness "No sharpening".
inline constexpr int kNoSharpening = 3;

/// A point of the developed picture in full size, not turned, in pixels; the neutral grey to be.
struct WhitePoint {
  std::int32_t x = 0;
  std::int32_t y = 0;
  bool operator==(const WhitePoint&) const = default;
};

/// What multiplies red, first green, blue and second green of the sensor. None of them is 0, or all are: not known.
struct WhiteBalanceCoefficients {
  std::array<float, 4> multipliers{};
  bool Known() const { return multipliers[1] > 0.0F; }
  bool operator==(const WhiteBalanceCoefficients&) const = default;
};

/// The parameters of a development in the layout in which the development engine takes them: 284 bytes, 16-bit fields
/// signed and little-endian, zero where nothing is said. Fresh ones are all zero.
class RawDevelopParams {
 public:
  static constexpr std::size_t kSize = 284;
  using Bytes = std::array<std::byte, kSize>;

  RawDevelopParams() = default;
  explicit RawDevelopParams(const Bytes& bytes) : bytes_(bytes) {}
  const Bytes& Data() const { return bytes_; }

  /// The engine's constant words at offsets 0, 2 and 4: 0, 1, 0. Whoever fills the record for a development calls it.
  void SetHeader();
  /// What the engine computed, bytes 52 to 155: to be forgotten before every preview.
  void ClearComputed();

  bool Linear() const { return Get(6) != 0; }
  void SetLinear(bool linear) { Set(6, linear ? 1 : 0); }
  int Contrast() const { return Get(8); }
  void SetContrast(int value) { Set(8, value); }
  int Saturation() const { return Get(10); }
  void SetSaturation(int value) { Set(10, value); }
  int Sharpness() const { return Get(12); }
  void SetSharpness(int value) { Set(12, value); }
  /// Kept: 0 is on, -1 off.
  bool FalseColourFilter() const { return Get(14) == 0; }
  void SetFalseColourFilter(bool on) { Set(14, on ? 0 : -1); }
  int Tone() const { return Get(16); }
  void SetTone(int value) { Set(16, value); }
  /// Tenths of a stop, -20..20.
  int ExposureCompensation() const { return Get(20); }
  void SetExposureCompensation(int tenths) { Set(20, tenths); }
  /// A code of the white balance table; -1 is the custom white point, or the coefficients if there are any.
  int WhiteBalance() const { return Get(40); }
  void SetWhiteBalance(int code) { Set(40, code); }
  WhitePoint CustomPoint() const;
  void SetCustomPoint(WhitePoint point);
  /// What the last development with this record computed; lies in the bytes that ClearComputed clears.
  WhiteBalanceCoefficients Coefficients() const;
  void SetCoefficients(const WhiteBalanceCoefficients& coefficients);
  /// One byte: 255 is -1, as shot.
  int PhotoEffect() const;
  void SetPhotoEffect(int effect);
  /// kAsShot, 1 sRGB, 2 AdobeRGB; 0 where the camera has no such setting.
  int ColourSpace() const { return Get(158); }
  void SetColourSpace(int space) { Set(158, space); }

  bool operator==(const RawDevelopParams&) const = default;

 private:
  std::int16_t Get(std::size_t offset) const;
  void Set(std::size_t offset, int value);
  std::uint32_t GetLong(std::size_t offset) const;
  void SetLong(std::size_t offset, std::uint32_t value);

  Bytes bytes_{};
};

}  // namespace ml::rawconvert
