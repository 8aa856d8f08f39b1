#include "rawconvert/camera_image.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <utility>

#include "imaging/scale.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

constexpr int kFirstVersion = 5, kLastVersion = 10;
constexpr std::uint32_t kUsualType = 0x102, kLastType = 511;
constexpr std::uint32_t kLow = 0xFFFF;
constexpr std::uint32_t kOperationCancelled = 5;
constexpr int kMaxGain = 20;
/// Of parameters that nobody changes.
constexpr int kParamAsShot = 255;
/// In the order in which they are set.
constexpr std::array kLeftAsShot = {DevParam::Contrast, DevParam::ColourDepth, DevParam::Enhance, DevParam::Hue,
                                    DevParam::ColourSpace};

bool Failed(CameraImageSdk::Code code) { return (code & kLow) != 0; }

void Check(CameraImageSdk::Code code) {
  if (!Failed(code)) return;
  if ((code & kLow) == kOperationCancelled) throw platform::Cancelled();
  throw CameraImageError(code & kLow);
}

template <std::size_t N>
std::array<std::byte, N * 4> Packed(const std::array<std::uint32_t, N>& words) {
  std::array<std::byte, N * 4> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::byte>(words[i / 4] >> 8 * (i % 4) & 0xFFU);
  return bytes;
}

bool Holds(const std::string& model, std::string_view text) {
  return platform::AsciiLower(model).find(text) != std::string::npos;
}

std::uint16_t EngineWhiteBalance(int code) {
  if (code == -1) return camera_white_balance::kCustomPoint;
  return code == kAsShot ? camera_white_balance::kAsShot : static_cast<std::uint16_t>(code);
}

bool IsEightBitModel(const std::string& model) {
  return model == "Canon PowerShot G1" || model == "Canon PowerShot Pro90 IS";
}

}  // namespace

void CameraImageHost::Begin() {
  if (users_ == 0) {
    auto code = version_ == 0 ? kLow : sdk_.StartSdk(version_);
    for (int version = kFirstVersion; Failed(code) && version <= kLastVersion; ++version) {
      code = sdk_.StartSdk(version);
      if (!Failed(code)) version_ = version;
    }
    Check(code);
    code = sdk_.OpenSource(source_);
    if (Failed(code)) sdk_.FinishSdk();
    Check(code);
  }
  ++users_;
}

void CameraImageHost::End() {
  if (--users_ > 0) return;
  sdk_.CloseSource(source_);
  sdk_.FinishSdk();
}

CameraImage::CameraImage(const std::string& path, CameraImageHost& host) : host_(host) {
  if (path.starts_with("\\\\")) throw platform::UserError(messages::kOnNetworkDrive);
  try {
    Open(path);
  } catch (const CameraImageError&) {
    throw platform::UserError(messages::kUnableToOpen);
  }
}

CameraImage::~CameraImage() { host_.Sdk().CloseImage(item_); }

void CameraImage::Open(const std::string& path) {
  use_.emplace(host_);
  auto& sdk = host_.Sdk();
  auto code = sdk.MakeImageItem(host_.Source(), path, kUsualType, item_);
  for (std::uint32_t type = 0; Failed(code) && type <= kLastType; ++type) {
    code = sdk.MakeImageItem(host_.Source(), path, type, item_);
  }
  Check(code);
  Check(sdk.OpenImage(item_));
}

void CameraImage::SetParameters(const CameraImageSettings& settings, bool isEos1Ds) {
  const auto set = [&](DevParam param, int first, int second = 0) {
    return host_.Sdk().SetDevParam(picture_, param, first, second);
  };
  set(DevParam::DigitalGain, std::clamp(settings.digitalGain, -kMaxGain, kMaxGain));
  set(DevParam::FalseColourFilter, settings.falseColourFilter ? 1 : 0);
  set(DevParam::Linear, settings.linear ? 1 : 0);
  set(DevParam::ColourMatrix, settings.colourMatrix);
  set(DevParam::Edge, settings.edgeLevel, settings.edgeObject);
  for (const auto param : kLeftAsShot) set(param, kParamAsShot);
  if (isEos1Ds) Check(set(DevParam::FalseResolutionFilter, settings.falseResolutionFilter ? 1 : 0));
}

void CameraImage::SendWhiteBalance(const CameraImageSettings& settings) {
  namespace mode = camera_white_balance;
  const auto send = [&](std::uint16_t code, std::span<const std::byte> data) {
    Check(host_.Sdk().SetWhiteBalance(picture_, code, data));
  };
  const auto code = EngineWhiteBalance(settings.whiteBalance);
  if (code == mode::kCustomPoint) {
    send(code, Packed<2>({static_cast<std::uint32_t>(settings.customX), static_cast<std::uint32_t>(settings.customY)}));
  } else if (code == mode::kColourTemperature) {
    send(code, Packed<1>({static_cast<std::uint32_t>(settings.colourTemperature)}));
  } else if (code == mode::kReuse && host_.coefficients.Known()) {
    std::array<std::uint32_t, 4> block{};
    for (std::size_t i = 0; i < 4; ++i) block[i] = std::bit_cast<std::uint32_t>(host_.coefficients.multipliers[i]);
    send(code, Packed<4>(block));
  } else {
    send(code == mode::kReuse ? mode::kAsShot : code, {});
  }
}

imaging::PixelBuffer CameraImage::Develop(const CameraImageSettings& settings, const std::string& model, bool wish16,
                                          const DevelopWatch& watch) {
  auto& sdk = host_.Sdk();
  Check(sdk.GetPicture(item_, picture_));
  const bool isEos1Ds = Holds(model, "eos-1ds");
  const bool forced16 = isEos1Ds && settings.linear;
  const bool wide = forced16 || (wish16 && !IsEightBitModel(model));
  std::uint16_t width = 0, height = 0;
  Check(sdk.EnumPropertyReset(item_));
  Check(sdk.EnumPropertyRelease(item_));
  Check(sdk.GetProperty(item_, kPropertyWidth, width));
  Check(sdk.GetProperty(item_, kPropertyHeight, height));
  SetParameters(settings, isEos1Ds);
  SendWhiteBalance(settings);
  auto pixels = imaging::MakePixelBuffer(width, height, imaging::PixelOrder::Rgb, wide ? 2 : 1);
  Check(sdk.GetDevelopedImageData(picture_, wide ? CameraImageFormat::Bits16 : CameraImageFormat::Bits8, pixels.data,
                                  watch));
  Check(sdk.GetCoefficients(picture_, host_.coefficients));
  return forced16 && !wish16 ? imaging::HighBytes(std::move(pixels)) : pixels;
}

void CameraImage::StoreParameters() { host_.Sdk().FlashDevParam(picture_); }

}  // namespace ml::rawconvert
