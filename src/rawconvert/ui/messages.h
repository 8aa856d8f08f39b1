#pragma once

#include <string>

/// The texts of the conversion dialogs.
namespace ml::rawconvert::ui::messages {

inline constexpr auto kOneTitle = "Convert RAW Image";
inline constexpr auto kBatchTitle = "Batch Convert RAW Files";
inline constexpr auto kConvert = "&Convert";
inline constexpr auto kConvertSelected = "Convert &Selected";
inline constexpr auto kConvertAll = "Convert &All";
inline std::string ConvertCount(int count) {
  return count == 1 ? "&Convert 1 Image" : "&Convert " + std::to_string(count) + " Images";
}

inline constexpr auto kMidPoint = "The mid point must be a value between 0.01 and 9.99";
inline constexpr auto kBlackPercent = "Black point percentage must be a value between 0% and 100%.";
inline constexpr auto kWhitePercent = "White point percentage must be a value between 0% and 100%.";
inline constexpr auto kPercentSum = "Black point percentage plus white point percentage must be 100% or less.";
inline std::string NumberFromTo(const std::string& smallest, const std::string& largest) {
  return "Takes a number from " + smallest + " to " + largest + ".";
}

// Why a field cannot be used
inline constexpr auto kNotWithLinear = "Linear images are developed without it.";
inline constexpr auto kOnlyNormal = "Only normal conversion knows it.";
inline constexpr auto kNotThisCamera = "Files of this camera are developed without it.";
inline constexpr auto kByPhotoEffect = "The photo effect decides it.";
inline constexpr auto kOnlyColourTemperature = "Belongs to the white balance \"Color temp\".";
inline constexpr auto kNoQuality = "Files of this format keep every pixel.";
inline constexpr auto kResizeResolution = "The resolution of the resized image counts.";
inline constexpr auto kOnlyPostProcessed = "Images are not post-processed.";
inline constexpr auto kNotChosen = "Tick the box before it first.";
inline constexpr auto kOnlyLengths = "Pixels need no resolution.";
inline constexpr auto kOtherLevels = "Belongs to the other kind of levels.";
inline constexpr auto kOtherSharpening = "Belongs to the other kind of sharpening.";
inline constexpr auto kOtherFolder = "The images go to the folder CONVERTED.";

}  // namespace ml::rawconvert::ui::messages
