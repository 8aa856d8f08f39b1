#include "metadata/canon/canon_values.h"

#include <array>
#include <cstdio>
#include <string>

#include "metadata/canon/camera_settings.h"
#include "metadata/canon/canon_model.h"
#include "metadata/canon/custom_functions.h"
#include "metadata/canon/shot_information.h"
#include "metadata/canon/white_balance.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kFocalLengthCount = 4, kAfCount = 24, kStitchShot = 22;
constexpr std::uint16_t kPowerShotUnits = 150;  ///< from here on a PowerShot counts in 32nds of a millimetre
constexpr std::uint16_t kLongestFocal = 5000;   ///< millimetres; what is longer has its bytes swapped

std::string_view UpToLastDigit(std::string_view text) {
  return text.substr(0, text.find_last_of("0123456789") + 1);  // none: 0
}

std::string BodyNumberText(const std::string& model, std::uint32_t value) {
  const auto is = [&](auto name) { return platform::EqualsAsciiFolded(model, name); };
  std::array<char, 16> text{};
  if (is("Canon EOS D30")) {
    std::snprintf(text.data(), text.size(), "%04x%05u", value >> 16, value & 0xffff);
  } else {
    const int digits = is("Canon EOS-1D") || is("Canon EOS-1Ds") ? 6 : 10;
    std::snprintf(text.data(), text.size(), "%0*u", digits, value);
  }
  return text.data();
}

void ApplyColorTemperature(ExifData& data, std::uint32_t kelvin) {
  if (!data.whiteBalance.starts_with(kColorTemperatureWord)) return;
  data.whiteBalance = std::string(kColorTemperatureWord) + "=" + std::to_string(kelvin) + "K";
}

void ApplyFocalLength(ExifData& data, CanonWords words) {
  if (words.Count() < kFocalLengthCount) return;
  const auto word = words[1];
  if (word == 0) return;  // some PowerShots leave it out; what the EXIF block says stands then
  if (IsPowerShot(data.model)) {
    data.focalLength = word >= kPowerShotUnits ? word >> 5 : word;
  } else {
    data.focalLength = word > kLongestFocal ? SwapBytes(word) : word;
  }
}

}  // namespace

void ApplyCanonString(ExifData& data, std::uint16_t tag, std::string_view text) {
  if (tag == canon_tag::kFirmware && data.firmware.empty()) data.firmware = UpToLastDigit(text);
  if (tag == canon_tag::kOwner && !text.empty()) data.owner = text;
}

void ApplyCanonLong(ExifData& data, std::uint16_t tag, std::uint32_t value) {
  switch (tag) {
    case canon_tag::kImageNumber:
      data.imageNumber = static_cast<std::int32_t>(value);
      break;
    case canon_tag::kBodyNumber:
      data.bodySerial = BodyNumberText(data.model, value);
      break;
    case canon_tag::kColorTemperature:
      ApplyColorTemperature(data, value);
      break;
    case canon_tag::kColorSpace:
      if (value == 1) data.colorSpace = "sRGB";
      if (value == 2) data.colorSpace = "AdobeRGB";
      break;
    default:
      break;
  }
}

void ApplyCanonArray(ExifData& data, std::uint16_t tag, CanonWords words) {
  switch (tag) {
    case canon_tag::kCameraSettings:
      return ApplyCameraSettings(data, words);
    case canon_tag::kFocalLength:
      return ApplyFocalLength(data, words);
    case canon_tag::kShotInformation:
      return ApplyShotInformation(data, words);
    case canon_tag::kCustomFunctions:
      if (auto text = CustomFunctionsText(data.model, words); !text.empty()) data.customFunctions = std::move(text);
      return;
    case canon_tag::kAfInformation:
      if (words.Count() >= kAfCount) data.stitchShot = words[kStitchShot];
      return;
    case canon_tag::kEos1DCustomFunctions:
      data.customFunctions = Eos1DCustomFunctionsText(words);
      return;
    default:
      return;
  }
}

}  // namespace ml::metadata
