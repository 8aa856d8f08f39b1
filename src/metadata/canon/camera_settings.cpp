#include "metadata/canon/camera_settings.h"

#include <span>
#include <string>
#include <string_view>

#include "metadata/canon/camera_setting_words.h"
#include "metadata/canon/canon_model.h"
#include "metadata/canon/flash_text.h"
#include "platform/numbers.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

struct WordRow {
  std::size_t index = 0;
  std::string ExifData::*field = nullptr;
  std::span<const CodeWord> words;
  std::string_view otherwise{};  ///< empty: another code leaves the field alone
};
constexpr WordRow kRows[] = {
    {1, &ExifData::macroFocus, kMacroWords},
    {3, &ExifData::imageQuality, kQualityWords, "Unknown"},
    {5, &ExifData::driveMode, kDriveWords, "Continuous"},
    {7, &ExifData::afMode, kAfWords},
    {13, &ExifData::contrast, kCanonLevelWords, "Normal"},
    {14, &ExifData::saturation, kCanonLevelWords, "Normal"},
    {15, &ExifData::sharpness, kCanonLevelWords, "Normal"},
    {16, &ExifData::iso, kIsoWords},
    {17, &ExifData::meteringMode, kMeteringWords},
    {20, &ExifData::exposureMode, kExposureWords},
};

constexpr std::size_t kSelfTimer = 2, kFlashMode = 4, kAfMode = 7, kScene = 11, kExposureMode = 20, kLens = 23,
                      kLensUnit = 25, kFlashDetail = 29, kAfContinuous = 32, kStabiliser = 34, kZoomOf = 36,
                      kZoomTo = 37, kEffect = 40, kTone = 42;
constexpr std::uint16_t kSwappedUnit = 0x0100;
constexpr std::uint16_t kSwappedFlashUnit = 0x60;  ///< the bits that name the flash, seen in the wrong byte

constexpr std::string_view kEffectModels[] = {" S330", " S45", " S50", " G3", " G5"};
constexpr std::string_view kToneModels[] = {"eos 10d", "eos kiss", "eos digital rebel"};

void ApplyFlash(ExifData& data, CanonWords words) {
  if (!words.Has(kFlashMode) || platform::EqualsAsciiFolded(data.flash, "off")) return;
  auto detail = words.Has(kFlashDetail) ? words[kFlashDetail] : kBuiltInFlash;
  if (IsEos1D(data.model) && (detail & kSwappedFlashUnit) != 0) detail = SwapBytes(detail);
  data.flash = CanonFlashText(words[kFlashMode], detail);
}

void ApplyAfMode(ExifData& data, CanonWords words) {
  if (!words.Has(kAfMode) || words[kAfMode] != kAfSingleOrContinuous) return;
  const bool continuous = words.Has(kAfContinuous) && words[kAfContinuous] != 0;
  data.afMode = continuous ? "Continuous AF" : "Single AF";
}

void ApplyScene(ExifData& data, CanonWords words) {
  if (!words.Has(kExposureMode) || words[kExposureMode] != kExposureByScene) return;
  if (const auto scene = WordOf(kSceneWords, words[kScene], ""); !scene.empty()) data.exposureMode = scene;
}

void ApplyLens(ExifData& data, CanonWords words) {
  if (!words.Has(kLensUnit) || words[kLensUnit] == 0) return;
  const bool swapped = words[kLensUnit] == kSwappedUnit;
  const auto wordAt = [&](std::size_t index) { return swapped ? SwapBytes(words[index]) : words[index]; };
  const int mostMillimetres = wordAt(kLens) / wordAt(kLensUnit),
            leastMillimetres = wordAt(kLens + 1) / wordAt(kLensUnit);
  data.lensMaxFocal = mostMillimetres;
  data.lensMinFocal = leastMillimetres;
}

void ApplyStabiliser(ExifData& data, CanonWords words) {
  if (words.Has(kLensUnit)) data.imageStabilisation = words.Has(kStabiliser) && words[kStabiliser] == 1;
}

void ApplyDigitalZoom(ExifData& data, CanonWords words) {
  if (!words.Has(kZoomTo) || words[kZoomOf] == words[kZoomTo] || words[kZoomOf] == 0) return;
  data.digitalZoom = platform::FixedNumber(static_cast<double>(words[kZoomTo]) / words[kZoomOf], 1) + "x";
}

void ApplyPictureEffect(ExifData& data, CanonWords words) {
  // Kept: one word more is asked for than the field needs.
  const auto holds = [&](auto part) {
    return data.model.find(part) != std::string::npos && !data.model.starts_with(part);
  };
  if (!words.Has(kEffect + 1) || std::ranges::none_of(kEffectModels, holds)) return;
  data.pictureEffectCode = words[kEffect];
  data.pictureEffect = WordOf(kPictureEffectWords, words[kEffect], "");
}

void ApplyTone(ExifData& data, CanonWords words) {
  if (!words.Has(kTone + 1)) return;  // likewise
  if (data.model.find("D60") != std::string::npos) {
    data.tone = WordOf(kD60ToneWords, words[kTone], "Red");
  } else if (ModelHoldsAny(data.model, kToneModels)) {
    data.tone = WordOf(kToneWords, words[kTone], "?");
  }
}

}  // namespace

void ApplyCameraSettings(ExifData& data, CanonWords words) {
  for (const auto& row : kRows) {
    if (!words.Has(row.index)) break;
    if (const auto word = WordOf(row.words, words[row.index], row.otherwise); !word.empty()) data.*row.field = word;
  }
  if (words.Has(kSelfTimer)) data.selfTimer = words[kSelfTimer] / 10.0;
  ApplyFlash(data, words);
  ApplyAfMode(data, words);
  ApplyScene(data, words);
  ApplyLens(data, words);
  ApplyStabiliser(data, words);
  ApplyDigitalZoom(data, words);
  ApplyPictureEffect(data, words);
  ApplyTone(data, words);
}

}  // namespace ml::metadata
