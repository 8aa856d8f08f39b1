#include "rawconvert/libraw/libraw_camera_image.h"

#include <algorithm>
#include <bit>

#include "metadata/byte_view.h"
#include "metadata/exif_data.h"
#include "platform/errors.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/libraw/as_shot_look.h"

namespace ml::rawconvert {
namespace {

constexpr CameraImageSdk::Code kDone = 0, kInternal = 0x02, kCancelled = 0x05, kNotFound = 0x22, kUnrecognised = 0x2C,
                               kCorrupt = 0x2D, kBadParameter = 0x60, kBadHandle = 0x61, kBadLength = 0x64;
constexpr std::uint32_t kRawFileType = 0x102;
constexpr int kParamAsShot = 255;

CameraImageSdk::Code CodeOf(const DevelopError& error) {
  switch (error.Code()) {
    case develop_code::kInvalid:
    case develop_code::kCorrupt:
      return kCorrupt;
    case develop_code::kUnsupported:
      return kUnrecognised;
    default:
      return kInternal;
  }
}

}  // namespace

struct LibRawCameraImage::Item {
  std::string path;
  std::unique_ptr<RawFile> file;
  metadata::ExifData exif;
  PictureLook look;
  WhiteBalanceChoice balance;
  WhiteBalanceCoefficients computed;
  int colourMatrix = 0;
  int edgeLevel = kParamAsShot;

  /// The look with what is still as shot taken from the file.
  PictureLook Finished() const {
    auto result = look;
    ApplyColourMatrix(result, colourMatrix != 0          ? colourMatrix
                              : exif.rawColorMatrix != 0 ? exif.rawColorMatrix
                                                         : exif.colorMatrix);
    result.sharpening = edgeLevel == kParamAsShot ? SharpeningOfLevel(0) : SharpeningOfEdgeLevel(edgeLevel);
    return result;
  }
};

LibRawCameraImage::LibRawCameraImage() = default;
LibRawCameraImage::~LibRawCameraImage() = default;

LibRawCameraImage::Item* LibRawCameraImage::Find(Handle item) {
  const auto found = items_.find(item);
  return found == items_.end() ? nullptr : found->second.get();
}

CameraImageSdk::Code LibRawCameraImage::StartSdk(int) { return kDone; }

CameraImageSdk::Code LibRawCameraImage::FinishSdk() {
  items_.clear();
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::OpenSource(Handle& source) {
  source = 1;
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::CloseSource(Handle) { return kDone; }

CameraImageSdk::Code LibRawCameraImage::MakeImageItem(Handle, const std::string& path, std::uint32_t type,
                                                      Handle& item) {
  if (type != kRawFileType) return kUnrecognised;
  item = ++last_;
  items_[item] = std::make_unique<Item>();
  items_[item]->path = path;
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::OpenImage(Handle handle) {
  auto* item = Find(handle);
  if (item == nullptr) return kBadHandle;
  try {
    item->file = RawFile::Open(item->path);
  } catch (const DevelopError& error) {
    return CodeOf(error);
  }
  if (item->file == nullptr) return kNotFound;
  item->exif = metadata::ExifData(item->path);
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::CloseImage(Handle item) { return items_.erase(item) > 0 ? kDone : kBadHandle; }

CameraImageSdk::Code LibRawCameraImage::GetPicture(Handle item, Handle& picture) {
  picture = item;
  const auto* found = Find(item);
  return found != nullptr && found->file != nullptr ? kDone : kBadHandle;
}

CameraImageSdk::Code LibRawCameraImage::EnumPropertyReset(Handle) { return kDone; }
CameraImageSdk::Code LibRawCameraImage::EnumPropertyRelease(Handle) { return kDone; }

CameraImageSdk::Code LibRawCameraImage::GetProperty(Handle handle, std::uint32_t property, std::uint16_t& value) {
  const auto* item = Find(handle);
  if (item == nullptr || item->file == nullptr) return kBadHandle;
  if (property != kPropertyWidth && property != kPropertyHeight) return kBadParameter;
  const auto size = item->file->Size();
  value = static_cast<std::uint16_t>(property == kPropertyWidth ? size.width : size.height);
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::SetDevParam(Handle picture, DevParam param, int value, int second) {
  auto* item = Find(picture);
  if (item == nullptr) return kBadHandle;
  switch (param) {
    case DevParam::DigitalGain:
      item->look.exposureTenths = std::clamp(value, -20, 20);
      return kDone;
    case DevParam::FalseColourFilter:
      item->look.falseColourFilter = value != 0;
      return kDone;
    case DevParam::Linear:
      item->look.linear = value != 0;
      return kDone;
    case DevParam::ColourMatrix:
      item->colourMatrix = value;
      return kDone;
    case DevParam::Edge:
      item->edgeLevel = value;
      item->look.sharpeningRadius = second == kParamAsShot ? 3 : std::clamp(second, 1, 5);
      return kDone;
    case DevParam::Contrast:
    case DevParam::ColourDepth:
    case DevParam::Enhance:
    case DevParam::Hue:
    case DevParam::ColourSpace:
      return value == kParamAsShot ? kDone : kBadParameter;
    case DevParam::FalseResolutionFilter:
      return kDone;  // the interpolation makes none of these patterns
  }
  return kBadParameter;
}

CameraImageSdk::Code LibRawCameraImage::SetWhiteBalance(Handle picture, std::uint16_t mode,
                                                        std::span<const std::byte> data) {
  namespace balance = camera_white_balance;
  auto* item = Find(picture);
  if (item == nullptr) return kBadHandle;
  const metadata::ByteView view(data, metadata::ByteOrder::Little);
  WhiteBalanceChoice choice{.code = mode};
  try {
    if (mode == balance::kCustomPoint) {
      choice.code = -1;
      choice.point = {static_cast<std::int32_t>(view.readLong(0)), static_cast<std::int32_t>(view.readLong(4))};
    } else if (mode == balance::kReuse) {
      choice.code = -1;
      for (std::size_t i = 0; i < 4; ++i) {
        choice.coefficients.multipliers[i] = std::bit_cast<float>(view.readLong(4 * i));
      }
    } else if (mode == balance::kColourTemperature) {
      choice.kelvin = static_cast<int>(view.readLong(0));
    }
  } catch (metadata::ExifException) {
    return kBadLength;
  }
  item->balance = choice;
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::GetDevelopedImageData(Handle picture, CameraImageFormat format,
                                                              std::span<std::byte> pixels, const DevelopWatch& watch) {
  auto* item = Find(picture);
  if (item == nullptr || item->file == nullptr) return kBadHandle;
  try {
    const auto result = item->file->Develop({.whiteBalance = item->balance,
                                             .look = item->Finished(),
                                             .bytesPerSample = format == CameraImageFormat::Bits16 ? 2 : 1},
                                            watch);
    if (result.pixels.data.size() != pixels.size()) return kBadLength;
    std::ranges::copy(result.pixels.data, pixels.begin());
    item->computed = result.coefficients;
    return kDone;
  } catch (const DevelopError& error) {
    return CodeOf(error);
  } catch (const platform::Cancelled&) {
    return kCancelled;
  }
}

CameraImageSdk::Code LibRawCameraImage::GetCoefficients(Handle picture, WhiteBalanceCoefficients& coefficients) {
  const auto* item = Find(picture);
  if (item == nullptr) return kBadHandle;
  coefficients = item->computed;
  return kDone;
}

CameraImageSdk::Code LibRawCameraImage::FlashDevParam(Handle) { return kDone; }

}  // namespace ml::rawconvert
