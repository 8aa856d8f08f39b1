#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "rawconvert/develop_watch.h"
#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

/// The parameters that are set before a development, in the order in which they are set.
enum class DevParam {
  DigitalGain,
  FalseColourFilter,
  Linear,
  ColourMatrix,
  Edge,  ///< two values: level, object
  Contrast,
  ColourDepth,
  Enhance,
  Hue,
  ColourSpace,
  FalseResolutionFilter
};

/// Formats of the developed data.
enum class CameraImageFormat { Bits8 = 7, Bits16 = 8 };

/// Properties of an image, two bytes each.
inline constexpr std::uint32_t kPropertyWidth = 0x20000004;
inline constexpr std::uint32_t kPropertyHeight = 0x20000005;

/// Modes of the white balance beside the codes of its table.
namespace camera_white_balance {
inline constexpr std::uint16_t kAsShot = 255;
inline constexpr std::uint16_t kColourTemperature = 9;  ///< with 4 bytes: kelvin
inline constexpr std::uint16_t kReuse = 4095;           ///< with the coefficient block
inline constexpr std::uint16_t kCustomPoint = 32768;    ///< with 8 bytes: x, y
}  // namespace camera_white_balance

/// The engine of the EOS-1D family, in small steps; CameraImage is how the conversion uses it. Every call but the last
/// gives a result code, 0 in the low 16 bits for success; numbers in byte spans are 32-bit little-endian. One
/// development at a time.
class CameraImageSdk {
 public:
  using Code = std::uint32_t;
  using Handle = std::uint32_t;

  virtual ~CameraImageSdk() = default;
  CameraImageSdk(const CameraImageSdk&) = delete;
  CameraImageSdk& operator=(const CameraImageSdk&) = delete;

  virtual Code StartSdk(int version) = 0;
  virtual Code FinishSdk() = 0;
  virtual Code OpenSource(Handle& source) = 0;
  virtual Code CloseSource(Handle source) = 0;
  virtual Code MakeImageItem(Handle source, const std::string& path, std::uint32_t type, Handle& item) = 0;
  virtual Code OpenImage(Handle item) = 0;
  virtual Code CloseImage(Handle item) = 0;
  virtual Code GetPicture(Handle item, Handle& picture) = 0;
  virtual Code EnumPropertyReset(Handle item) = 0;
  virtual Code EnumPropertyRelease(Handle item) = 0;
  virtual Code GetProperty(Handle item, std::uint32_t property, std::uint16_t& value) = 0;
  virtual Code SetDevParam(Handle picture, DevParam param, int value, int second) = 0;
  virtual Code SetWhiteBalance(Handle picture, std::uint16_t mode, std::span<const std::byte> data) = 0;
  /// Fills `pixels`, width x height x 3 samples. A cancel comes as cdOPERATION_CANCELLED.
  virtual Code GetDevelopedImageData(Handle picture, CameraImageFormat format, std::span<std::byte> pixels,
                                     const DevelopWatch& watch) = 0;
  virtual Code GetCoefficients(Handle picture, WhiteBalanceCoefficients& coefficients) = 0;
  /// Kept as a call of the protocol: parameters are never written into a raw file.
  virtual Code FlashDevParam(Handle picture) = 0;

 protected:
  CameraImageSdk() = default;
};

}  // namespace ml::rawconvert
