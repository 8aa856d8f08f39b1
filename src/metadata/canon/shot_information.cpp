#include "metadata/canon/shot_information.h"

#include <string>
#include <string_view>

#include "metadata/canon/canon_model.h"
#include "metadata/canon/white_balance.h"
#include "metadata/code_words.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kExposureCompensation = 6, kWhiteBalance = 7, kFrame = 9, kFocusPoint = 14,
                      kFlashCompensation = 15, kAebShot = 16, kAebCompensation = 17, kDistance = 19;
constexpr double kStop = 32.0;
constexpr double kNoDistance = 0.01;  ///< metres; the standard's tag is better where it says more

constexpr std::uint16_t kFocusPointMask = 7;
constexpr CodeWord kFocusPointWords[] = {
    {1, "[Right]"},        {2, "[Center]"},        {3, "[Center + Right]"},       {4, "[Left]"},
    {5, "[Left + Right]"}, {6, "[Left + Center]"}, {7, "[Left + Center + Right]"}};

/// They tell distances in centimetres, all others in millimetres.
constexpr std::string_view kCentimetreModels[] = {"eos d30",        "eos d60",           "eos 10d",      "eos 300d",
                                                  "eos kiss",       "eos digital rebel", "powershot g3", "powershot g5",
                                                  "powershot s400", "powershot s50",     "ixus 400"};

/// Kept: 32768 itself counts as above zero.
double Stops(std::uint16_t word) { return (word > 32768 ? word - 65536 : word) / kStop; }

void ApplyFrame(ExifData& data, CanonWords words) {
  if (!words.Has(kFrame) || !platform::EqualsAsciiFolded(data.driveMode, "continuous")) return;
  data.continuousFrame = words.Signed(kFrame);
  if (data.continuousFrame >= 1) data.driveMode = "Continuous frame: " + std::to_string(data.continuousFrame);
}

void ApplyFocusPoint(ExifData& data, CanonWords words) {
  if (!words.Has(kFocusPoint)) return;
  data.focusPointCode = words[kFocusPoint];
  const auto word = WordOf(kFocusPointWords, words[kFocusPoint] & kFocusPointMask, "");
  if (!word.empty()) data.focusPoint = word;
}

void ApplyFlashCompensation(ExifData& data, CanonWords words) {
  if (!words.Has(kFlashCompensation)) return;
  auto word = words[kFlashCompensation];
  if (IsEos1D(data.model) && word % 2 != 0) word = SwapBytes(word);
  data.flashCompensation = Stops(word);
}

void ApplyDistance(ExifData& data, CanonWords words) {
  if (!words.Has(kDistance) || data.subjectDistance >= kNoDistance) return;
  data.subjectDistance = words[kDistance] * (ModelHoldsAny(data.model, kCentimetreModels) ? 0.01 : 0.001);
}

}  // namespace

void ApplyShotInformation(ExifData& data, CanonWords words) {
  if (words.Has(kExposureCompensation)) data.exposureCompensation = words.Signed(kExposureCompensation) / kStop;
  if (words.Has(kWhiteBalance)) data.whiteBalance = CanonWhiteBalanceWord(words[kWhiteBalance]);
  ApplyFrame(data, words);
  ApplyFocusPoint(data, words);
  ApplyFlashCompensation(data, words);
  if (words.Has(kAebShot)) data.aebShot = words[kAebShot];
  if (words.Has(kAebCompensation)) data.aebCompensation = Stops(words[kAebCompensation]);
  ApplyDistance(data, words);
}

}  // namespace ml::metadata
