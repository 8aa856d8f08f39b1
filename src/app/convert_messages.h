#pragma once

#include <string>
#include <string_view>

/// The sentences of the conversion commands.
namespace ml::app {

inline constexpr std::string_view kSelectToConvert = "Please select one or more raw files to convert.";
inline constexpr std::string_view kNothingToConvert = "There are no RAW files to be converted";
inline constexpr std::string_view kConvertJob = "Batch Conversion Progress";
inline std::string Converted(int done, int count) {
  return "Converted " + std::to_string(done) + " of " + std::to_string(count) + (count == 1 ? " image" : " images");
}
/// Title of the main window meanwhile.
inline std::string ConvertingTitle(int index, int count) {
  return std::to_string(index) + "/" + std::to_string(count) + " Marrowlantern";
}

}  // namespace ml::app
