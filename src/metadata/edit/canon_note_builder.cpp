#include "metadata/edit/canon_note_builder.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "metadata/canon/canon_model.h"
#include "metadata/canon/canon_values.h"
#include "metadata/canon/canon_words_of.h"
#include "metadata/canon/white_balance.h"
#include "platform/numbers.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kTextField = 32;  ///< of firmware and owner
constexpr std::size_t kAfCount = 24, kStitchShot = 22;
constexpr std::uint16_t kAfPoints = 7;  ///< so many that the array has its size

std::optional<std::uint32_t> BodyNumber(const ExifData& data) {
  constexpr std::size_t kHexDigits = 4;
  const std::string_view text = data.bodySerial;
  if (!platform::EqualsAsciiFolded(data.model, "Canon EOS D30")) return platform::WholeNumber<std::uint32_t>(text);
  if (text.size() <= kHexDigits) return std::nullopt;
  const auto high = platform::WholeNumber<std::uint32_t>(text.substr(0, kHexDigits), 16);
  const auto low = platform::WholeNumber<std::uint32_t>(text.substr(kHexDigits));
  if (!high || !low || *low > 0xffff) return std::nullopt;
  return *high << 16 | *low;
}

std::uint16_t ColorSpace(const std::string& word) { return word == "sRGB" ? 1 : word == "AdobeRGB" ? 2 : 0; }

/// Behind the word of the white balance.
std::uint16_t Kelvin(const ExifData& data) {
  const auto prefix = std::string(kColorTemperatureWord) + "=";
  if (!data.whiteBalance.starts_with(prefix)) return 0;
  const auto kelvin = platform::LeadingInteger(std::string_view(data.whiteBalance).substr(prefix.size()));
  return static_cast<std::uint16_t>(std::clamp(kelvin, 0, int{std::numeric_limits<std::uint16_t>::max()}));
}

void AddArray(IfdBuilder& note, std::uint16_t tag, const CanonArray& words) {
  if (!words.empty()) note.Shorts(tag, words);
}

void AddText(IfdBuilder& note, std::uint16_t tag, const std::string& text) {
  note.Ascii(tag, std::string_view(text).substr(0, kTextField - 1), kTextField);
}

}  // namespace

IfdBuilder BuildCanonMakerNote(const ExifData& data, ByteOrder order) {
  using namespace canon_tag;
  IfdBuilder note(order);
  AddArray(note, kCameraSettings, CameraSettingsOf(data));
  AddArray(note, kFocalLength, FocalLengthOf(data));
  AddArray(note, kShotInformation, ShotInformationOf(data));
  AddText(note, kFirmware, data.firmware);
  note.Long(kImageNumber, static_cast<std::uint32_t>(std::max(data.imageNumber, 0)));
  AddText(note, kOwner, data.owner);
  if (const auto number = BodyNumber(data)) note.Long(kBodyNumber, *number);
  AddArray(note, IsEos1D(data.model) ? kEos1DCustomFunctions : kCustomFunctions, CustomFunctionsOf(data));
  if (data.stitchShot > 0) {
    CanonArray words(kAfCount);
    words[0] = words[1] = kAfPoints;
    words[2] = words[4] = static_cast<std::uint16_t>(data.imageWidth);
    words[3] = words[5] = static_cast<std::uint16_t>(data.imageHeight);
    words[kStitchShot] = static_cast<std::uint16_t>(data.stitchShot);
    AddArray(note, kAfInformation, words);
  }
  if (const auto kelvin = Kelvin(data); kelvin != 0) note.Short(kColorTemperature, kelvin);
  if (const auto space = ColorSpace(data.colorSpace); space != 0) note.Short(kColorSpace, space);
  return note;
}

}  // namespace ml::metadata
