#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ml::platform {

/// All conversions between points and pixels reckon with this screen.
inline constexpr int kScreenDpi = 96;

/// number * numerator / denominator, rounded half away from zero, in 64 bits. `denominator` is not 0.
std::int32_t mulDiv(std::int32_t number, std::int32_t numerator, std::int32_t denominator);

/// A font as settings and settings files hold it, 60 bytes, little-endian: int32 height @0, width @4,
/// escapement @8, orientation @12, weight @16; bytes italic @20, underline @21, strike-out @22, charset @23,
/// output precision @24, clip precision @25, quality @26, pitch and family @27; face name @28, 32 bytes.
/// The bytes are kept as they were read, so that what we do not understand survives.
class FontRecord {
 public:
  static constexpr std::size_t kSize = 60;
  using Bytes = std::array<std::uint8_t, kSize>;

  FontRecord() = default;
  explicit FontRecord(const Bytes& bytes) : bytes_(bytes) {}
  /// `face` at `points`, weight 400: a negative height of mulDiv(points, 96, 72).
  static FontRecord FromPoints(std::string_view face, int points);
  /// Takes exactly 120 hexadecimal digits in either case; false and unchanged for anything else.
  bool SetHex(std::string_view digits);
  std::string Hex() const;

  /// Negative: em size in pixels. Positive: cell height in pixels.
  std::int32_t Height() const;
  std::int32_t Weight() const;
  bool Italic() const { return bytes_[20] != 0; }
  bool Underline() const { return bytes_[21] != 0; }
  bool StrikeOut() const { return bytes_[22] != 0; }
  /// Up to the first zero byte.
  std::string Face() const;
  double PointSize() const;

  void SetHeight(std::int32_t height);
  void SetWeight(std::int32_t weight);
  void SetItalic(bool on) { bytes_[20] = on ? 1 : 0; }
  void SetUnderline(bool on) { bytes_[21] = on ? 1 : 0; }
  void SetStrikeOut(bool on) { bytes_[22] = on ? 1 : 0; }
  /// Cut to 31 bytes, never inside a character.
  void SetFace(std::string_view face);

  const Bytes& Raw() const { return bytes_; }
  friend bool operator==(const FontRecord&, const FontRecord&) = default;

 private:
  std::int32_t Long(std::size_t offset) const;
  void PutLong(std::size_t offset, std::int32_t value);
  Bytes bytes_{};
};

}  // namespace ml::platform
