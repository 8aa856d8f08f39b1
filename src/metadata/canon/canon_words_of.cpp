#include "metadata/canon/canon_words_of.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

#include "metadata/byte_writer.h"
#include "metadata/canon/camera_setting_words.h"
#include "metadata/canon/canon_model.h"
#include "metadata/canon/canon_words.h"
#include "metadata/canon/custom_functions.h"
#include "metadata/canon/flash_text.h"
#include "metadata/canon/shot_information.h"
#include "metadata/canon/white_balance.h"
#include "metadata/code_words.h"
#include "metadata/value_text.h"
#include "platform/numbers.h"

namespace ml::metadata {
namespace {

using Word = std::uint16_t;

constexpr std::size_t kSettingsCount = 46, kShotCount = 33, kFocalCount = 4;  ///< as the EOS cameras of 2000 wrote them
constexpr Word kNoMeaning = 0xffff;
constexpr double kStop = 32.0;

CanonArray MakeArray(std::size_t count, Word otherwise = 0) {
  CanonArray words(count, otherwise);
  words[0] = static_cast<Word>(2 * count);
  return words;
}

Word Limited(double value) {
  return static_cast<Word>(std::clamp(std::round(value), 0.0, double{std::numeric_limits<Word>::max()}));
}
Word Signed(double value) {
  constexpr double kLimit = std::numeric_limits<std::int16_t>::max();
  return static_cast<Word>(static_cast<std::int16_t>(std::clamp(std::round(value), -kLimit, kLimit)));
}
Word CodeOf(std::span<const CodeWord> words, std::string_view text, Word otherwise) {
  const auto found = std::ranges::find(words, text, &CodeWord::word);
  return found == words.end() ? otherwise : static_cast<Word>(found->code);
}

struct WordRow {
  std::size_t index = 0;
  std::string ExifData::*field = nullptr;
  std::span<const CodeWord> words;
  Word otherwise = kNoMeaning;  ///< of another text, and of none
};
constexpr WordRow kRows[] = {
    {1, &ExifData::macroFocus, kMacroWords, 2},      {3, &ExifData::imageQuality, kQualityWords},
    {5, &ExifData::driveMode, kDriveWords, 1},       {7, &ExifData::afMode, kAfWords},
    {13, &ExifData::contrast, kCanonLevelWords, 0},  {14, &ExifData::saturation, kCanonLevelWords, 0},
    {15, &ExifData::sharpness, kCanonLevelWords, 0}, {16, &ExifData::iso, kIsoWords, 0},
    {17, &ExifData::meteringMode, kMeteringWords},   {20, &ExifData::exposureMode, kExposureWords},
};

constexpr Word kOtherZoom = 3, kRangeNotKnown = 2, kNotByScene = 1, kNoOpticalZoom = 8;
constexpr std::string_view kSingleAf = "Single AF", kContinuousAf = "Continuous AF";

/// What only an array of settings tells, but for the levels, which the standard's tags tell too.
bool KnowsSettings(const ExifData& data) {
  return !data.driveMode.empty() || !data.afMode.empty() || !data.imageQuality.empty() || !data.macroFocus.empty() ||
         !data.tone.empty() || !data.pictureEffect.empty() || data.selfTimer > 0 || data.lensMaxFocal > 0;
}

void SetFlash(CanonArray& words, const std::string& text) {
  constexpr std::size_t kMode = 4, kDetail = 29;
  constexpr Word kUnits[] = {0, kBuiltInFlash, 0x4000};
  constexpr Word kControls[] = {0, 1, 2, 4, 8}, kMarks[] = {0, 0x10, 0x80, 0x90};
  for (const auto unit : kUnits) {
    for (const auto control : kControls) {
      for (const auto mark : kMarks) {
        for (Word mode = 0; mode <= 6; ++mode) {
          const auto detail = static_cast<Word>(unit | control | mark);
          // A unit of no bit reads as off, whatever the mode.
          if ((unit == 0 && mode != 0) || CanonFlashText(mode, detail) != text) continue;
          words[kMode] = mode;
          words[kDetail] = detail;
          return;
        }
      }
    }
  }
}

void SetExposureMode(CanonArray& words, const std::string& text) {
  constexpr std::size_t kScene = 11, kMode = 20;
  const auto scene = CodeOf(kSceneWords, text, kNoMeaning);
  words[kScene] = kNotByScene;
  if (words[kMode] != kNoMeaning || scene == kNoMeaning) return;
  words[kScene] = scene;
  words[kMode] = kExposureByScene;
}

void SetDigitalZoom(CanonArray& words, const ExifData& data) {
  constexpr std::size_t kSource = 36, kTarget = 37;
  constexpr Word kTenths = 10;
  const auto told = platform::LeadingNumber(data.digitalZoom);
  const double zoom = told > 0 ? told : 1;
  const bool fits = data.imageWidth > 0 && data.imageWidth * zoom <= std::numeric_limits<Word>::max();
  words[kSource] = fits ? static_cast<Word>(data.imageWidth) : kTenths;
  words[kTarget] = Limited(words[kSource] * zoom);
}

void SetTone(CanonArray& words, const ExifData& data) {
  constexpr std::size_t kTone = 42;
  constexpr Word kRed = 2;
  const bool d60 = data.model.find("D60") != std::string::npos;
  words[kTone] =
      d60 ? CodeOf(kD60ToneWords, data.tone, data.tone.empty() ? 0 : kRed) : CodeOf(kToneWords, data.tone, 0);
}

/// Aperture and time in stops, as a target and as what it became.
void SetExposure(CanonArray& words, const ExifData& data) {
  const auto fNumber = platform::LeadingNumber(data.aperture);
  const auto time = ReadShutterText(data.shutterSpeed);
  const auto seconds = time.fraction > 0 ? 1.0 / time.fraction : time.seconds;
  for (const std::size_t index : {4U, 21U}) {
    if (fNumber > 0) words[index] = Signed(2 * std::log2(fNumber) * kStop);
    if (seconds > 0) words[index + 1] = Signed(-std::log2(seconds) * kStop);
  }
}

/// On the EOS-1D an odd word is taken for one with its bytes swapped.
Word FlashCompensation(const ExifData& data) {
  const double value = data.flashCompensation * kStop;
  return IsEos1D(data.model) ? static_cast<Word>(Signed(value / 2) * 2) : Signed(value);
}

Word Distance(const ExifData& data) {
  // The reader knows the unit of each model.
  ExifData probe;
  probe.model = data.model;
  std::vector<std::byte> one(2 * (kShotCount), std::byte{0});
  constexpr std::size_t kDistance = 19;
  one[2 * kDistance] = std::byte{1};
  ApplyShotInformation(probe, CanonWords(ByteView(one, ByteOrder::Little)));
  return probe.subjectDistance > 0 ? Limited(data.subjectDistance / probe.subjectDistance) : Word{0};
}

Word WhiteBalance(const std::string& text) {
  constexpr Word kLast = 16;
  const auto word = text.starts_with(kColorTemperatureWord) ? kColorTemperatureWord : std::string_view(text);
  for (Word code = 0; code <= kLast; ++code) {
    if (CanonWhiteBalanceWord(code) == word) return code;
  }
  return kNoMeaning;
}

template <class TextOf>
CanonArray FunctionWords(const std::string& text, std::size_t count, std::size_t firstFunction, TextOf&& textOf) {
  constexpr Word kHighest = 7;
  const auto read = [&](const CanonArray& words) {
    ByteWriter bytes(ByteOrder::Little);
    for (const auto word : words) bytes.Short(word);
    return std::string(textOf(CanonWords(ByteView(bytes.View(), ByteOrder::Little))));
  };
  auto words = MakeArray(count);
  const auto hasAll = [&](const CanonArray& candidate) {
    const auto lines = read(candidate);
    for (auto at = lines.find('\n'); at != std::string::npos;) {
      const auto next = lines.find('\n', at + 1);
      const auto line = lines.substr(at, next - at);
      const auto found = text.find(line);
      const bool whole =
          found != std::string::npos && (found + line.size() == text.size() || text[found + line.size()] == '\n');
      if (!whole) return false;
      at = next;
    }
    return true;
  };
  for (std::size_t i = 1; i < count; ++i) words[i] = static_cast<Word>((i - 1 + firstFunction) << 8);
  if (firstFunction == 0) words[1] |= 1;  // the sense of the first one of the EOS-1D is the other way round
  const auto defaults = words;
  for (std::size_t i = 1; i < count; ++i) {
    for (Word value = 0; value <= kHighest && words[i] == defaults[i]; ++value) {
      auto candidate = defaults;
      candidate[i] = static_cast<Word>((candidate[i] & 0xff00) | value);
      if (read(candidate) != read(defaults) && hasAll(candidate)) words[i] = candidate[i];
    }
  }
  return words;
}

}  // namespace

CanonArray CameraSettingsOf(const ExifData& data) {
  constexpr std::size_t kSelfTimer = 2, kAf = 7, kAfContinuous = 32, kLens = 23, kUnit = 25, kStabiliser = 34,
                        kEffect = 40, kRecordMode = 9, kZoom = 12, kFocusRange = 18;
  constexpr std::size_t kZeros[] = {19, 35, 41};  // focus point, aperture on show, flash by hand: not told here
  if (!KnowsSettings(data)) return {};
  auto words = MakeArray(kSettingsCount, kNoMeaning);
  for (const auto& row : kRows) words[row.index] = CodeOf(row.words, data.*row.field, row.otherwise);
  if (data.afMode == kSingleAf || data.afMode == kContinuousAf) {
    words[kAf] = kAfSingleOrContinuous;
    words[kAfContinuous] = data.afMode == kContinuousAf ? 1 : 0;
  }
  words[kRecordMode] = 1;  // a JPEG
  words[kZoom] = data.digitalZoom.empty() ? 0 : kOtherZoom;
  words[kFocusRange] = kRangeNotKnown;
  for (const auto index : kZeros) words[index] = 0;
  words[kSelfTimer] = Limited(data.selfTimer * 10);
  SetFlash(words, data.flash);
  SetExposureMode(words, data.exposureMode);
  words[kLens] = Limited(data.lensMaxFocal);
  words[kLens + 1] = Limited(data.lensMinFocal);
  words[kUnit] = 1;
  words[kStabiliser] = data.imageStabilisation ? 1 : 0;
  SetDigitalZoom(words, data);
  words[kEffect] = Limited(data.pictureEffectCode);
  SetTone(words, data);
  return words;
}

CanonArray FocalLengthOf(const ExifData& data) {
  constexpr double kLongest = 5000;
  const bool whole = data.focalLength > 0 && data.focalLength == std::floor(data.focalLength);
  if (!whole || data.focalLength > kLongest) return {};
  CanonArray words(kFocalCount);
  // Long ones of a PowerShot count in the unit that its reader takes them for.
  const bool fine = IsPowerShot(data.model) && data.focalLength >= 150;
  const bool fixed = data.lensMaxFocal > 0 && data.lensMinFocal == data.lensMaxFocal;
  words[0] = fixed ? 1 : 2;
  words[1] = Limited(fine ? data.focalLength * kStop : data.focalLength);
  return words;
}

CanonArray ShotInformationOf(const ExifData& data) {
  constexpr std::size_t kExposure = 6, kWhite = 7, kFrame = 9, kFocus = 14, kFlash = 15, kAebShot = 16, kAeb = 17,
                        kDistance = 19, kOpticalZoom = 10;
  if (data.whiteBalance.empty() && data.focusPoint.empty() && data.focusPointCode == 0 && data.aebShot == 0 &&
      data.aebCompensation == 0 && data.flashCompensation == 0) {
    return {};
  }
  auto words = MakeArray(kShotCount);
  constexpr std::size_t kWithoutMeaning[] = {8, 13, 27, 28};  // slow shutter, guide number, automatic turn, filter
  for (const auto index : kWithoutMeaning) words[index] = kNoMeaning;
  SetExposure(words, data);
  words[kExposure] = Signed(data.exposureCompensation * kStop);
  words[kWhite] = WhiteBalance(data.whiteBalance);
  words[kFrame] = Signed(data.continuousFrame);
  words[kFocus] = static_cast<Word>(data.focusPointCode);
  words[kFlash] = FlashCompensation(data);
  words[kAebShot] = Limited(data.aebShot);
  words[kAeb] = Signed(data.aebCompensation * kStop);
  words[kDistance] = words[kDistance + 1] = Distance(data);
  words[kOpticalZoom] = kNoOpticalZoom;
  return words;
}

CanonArray CustomFunctionsOf(const ExifData& data) {
  constexpr std::size_t kEos10D = 18, kD30 = 14, kEos1D = 22;
  const auto& text = data.customFunctions;
  if (text.empty()) return {};
  if (IsEos1D(data.model)) return FunctionWords(text, kEos1D, 0, Eos1DCustomFunctionsText);
  const auto count = ModelHolds(data.model, "eos 10d") ? kEos10D : kD30;
  return FunctionWords(text, count, 1, [&](CanonWords words) { return CustomFunctionsText(data.model, words); });
}

}  // namespace ml::metadata
