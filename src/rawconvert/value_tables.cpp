#include "rawconvert/value_tables.h"

#include <array>

namespace ml::rawconvert {
namespace {

constexpr std::string_view kAsShotText = "As shot";

/// Low2 and High2 stand at the ends, so that the lists of three steps are the middle.
constexpr std::array kLevels = {ValueRow{kAsShot, kAsShotText}, ValueRow{-2, "Low2"}, ValueRow{-1, "Low"},
                                ValueRow{0, "Normal"},          ValueRow{1, "High"},  ValueRow{2, "High2"}};
constexpr std::array kThreeLevels = {kLevels[0], kLevels[2], kLevels[3], kLevels[4]};
constexpr ValueRow kNoSharpeningRow{kNoSharpening, "No sharpening"};
constexpr std::array kSharpness = {kLevels[0], kLevels[1], kLevels[2],      kLevels[3],
                                   kLevels[4], kLevels[5], kNoSharpeningRow};
constexpr std::array kThreeSharpness = {kLevels[0], kLevels[2], kLevels[3], kLevels[4], kNoSharpeningRow};

constexpr std::array kTones = {ValueRow{kAsShot, kAsShotText}, ValueRow{-2, "-2"}, ValueRow{-1, "-1"},
                               ValueRow{0, "Normal"},          ValueRow{1, "+1"},  ValueRow{2, "+2"}};
constexpr std::array kTwoTones = {ValueRow{kAsShot, kAsShotText}, ValueRow{-1, "Red"}, ValueRow{0, "Normal"},
                                  ValueRow{1, "Yellow"}};

constexpr ValueRow kBalanceAsShot{kAsShot, kAsShotText}, kAuto{0, "Auto"}, kDaylight{1, "Daylight"},
    kCloudy{2, "Cloudy"}, kTungsten{3, "Tungsten"}, kFluorescent{4, "Fluorescent"}, kFlash{5, "Flash"},
    kPreset{6, "Preset"}, kShade{8, "Shade"}, kColourTemperature{9, "Color temp"}, kFluorescentH{14, "Fluorescent-H"};
constexpr std::array kBalance1D = {kBalanceAsShot, kAuto,        kDaylight, kCloudy, kShade,
                                   kTungsten,      kFluorescent, kFlash,    kPreset, kColourTemperature};
constexpr std::array kBalance10D = {kBalanceAsShot, kAuto,        kDaylight, kShade,  kCloudy,
                                    kTungsten,      kFluorescent, kFlash,    kPreset, kColourTemperature};
constexpr std::array kBalanceOther = {kBalanceAsShot, kAuto,         kDaylight, kCloudy, kTungsten,
                                      kFluorescent,   kFluorescentH, kFlash,    kPreset};
constexpr std::array kBalanceNef = {ValueRow{255, kAsShotText}, ValueRow{0, "Auto"},        ValueRow{1, "Sunny"},
                                    ValueRow{2, "Cloudy"},      ValueRow{3, "Shade"},       ValueRow{4, "Flash"},
                                    ValueRow{5, "Fluorescent"}, ValueRow{6, "Incandescent"}};

constexpr std::array kSharpeningLevels = {ValueRow{255, "As Shot"},  ValueRow{0, "Off"},      ValueRow{1, "Very weak"},
                                          ValueRow{2, "Weak"},       ValueRow{3, "Standard"}, ValueRow{4, "Strong"},
                                          ValueRow{5, "Very strong"}};
constexpr std::array kSharpeningObjects = {ValueRow{255, kAsShotText}, ValueRow{1, "Very coarse"},
                                           ValueRow{2, "Coarse"},      ValueRow{3, "Standard"},
                                           ValueRow{4, "Fine"},        ValueRow{5, "Very fine"}};
constexpr std::array kColourMatrices = {ValueRow{0, kAsShotText},        ValueRow{1, "1: sRGB natural"},
                                        ValueRow{2, "2: sRGB portrait"}, ValueRow{3, "3: sRGB high-chroma"},
                                        ValueRow{4, "4: AdobeRGB"},      ValueRow{5, "5: sRGB low-chroma"}};
constexpr std::array kMethods = {ValueRow{0, "Normal"}, ValueRow{1, "Linear"}, ValueRow{2, "Combined"}};
constexpr std::array kBlendings = {ValueRow{0, "OFF"}, ValueRow{50, "Low"}, ValueRow{75, "Normal"},
                                   ValueRow{95, "High"}};
constexpr std::array kFormats = {
    ValueRow{0, "JPEG"},       ValueRow{1, "JPEG 2000 8-bit"}, ValueRow{2, "JPEG 2000 16-bit"},
    ValueRow{3, "PNG 8-bit"},  ValueRow{4, "PNG 16-bit"},      ValueRow{5, "TIFF 8-bit"},
    ValueRow{6, "TIFF 16-bit"}};
constexpr std::array kPhotoEffects = {
    ValueRow{-1, kAsShotText},     ValueRow{0, "Off"},   ValueRow{1, "Vivid"},           ValueRow{2, "Neutral"},
    ValueRow{3, "Low sharpening"}, ValueRow{4, "Sepia"}, ValueRow{5, "Black and White"}, ValueRow{6, "Custom"}};
constexpr std::array kColourSpaces = {ValueRow{0, kAsShotText}, ValueRow{1, "sRGB"}, ValueRow{2, "AdobeRGB"}};

}  // namespace

std::span<const ValueRow> ContrastValues(LevelSteps steps) {
  if (steps == LevelSteps::Five) return kLevels;
  return kThreeLevels;
}

std::span<const ValueRow> SharpnessValues(LevelSteps steps, bool noSharpening) {
  const std::span<const ValueRow> all =
      steps == LevelSteps::Five ? std::span<const ValueRow>(kSharpness) : kThreeSharpness;
  return noSharpening ? all : all.first(all.size() - 1);
}

std::span<const ValueRow> ToneValues(ToneSteps steps) {
  if (steps == ToneSteps::Four) return kTones;
  return kTwoTones;
}

std::span<const ValueRow> WhiteBalanceEos1D() { return kBalance1D; }
std::span<const ValueRow> WhiteBalanceEos10D() { return kBalance10D; }
std::span<const ValueRow> WhiteBalanceOther() { return kBalanceOther; }
std::span<const ValueRow> WhiteBalanceNef() { return kBalanceNef; }
std::span<const ValueRow> SharpeningLevels() { return kSharpeningLevels; }
std::span<const ValueRow> SharpeningObjects() { return kSharpeningObjects; }
std::span<const ValueRow> ColourMatrices() { return kColourMatrices; }
std::span<const ValueRow> Methods() { return kMethods; }
std::span<const ValueRow> NoiseBlendings() { return kBlendings; }
std::span<const ValueRow> OutputFormats() { return kFormats; }
std::span<const ValueRow> PhotoEffects() { return kPhotoEffects; }
std::span<const ValueRow> ColourSpaces() { return kColourSpaces; }

std::string CustomPointLabel(WhitePoint point) {
  return "Custom [" + std::to_string(point.x) + "," + std::to_string(point.y) + "]";
}

std::string_view LabelOf(std::span<const ValueRow> rows, int value) {
  for (const auto& row : rows) {
    if (row.value == value) return row.label;
  }
  return {};
}

}  // namespace ml::rawconvert
