#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "imagefiles/edits/image_edits.h"
#include "imagefiles/tools/tool_run.h"
#include "platform/locale_text.h"

/// Shooting data written to text files: a table with a line for each image, or the full text beside each image.
namespace ml::imagefiles {

/// The fields of the table unless the user has fields of his own; "|" stands for the delimiter.
inline constexpr std::string_view kDefaultExportFormat =
    "@file@|@fileSizePlain@|@model@|@bodyID@|@firmware@|@owner@|@dateTime@|@copyright@|@shutter@|@aperture@|"
    "@exposureMode@|@exposureCompensation@|@aebShotNumber@|@aebExpCompensation@|@flash@|@EFguideNumber@|"
    "@flashCompensation@|@meteringMode@|@driveMode@|@selfTimer@|@iso@|@lens@|@focalLength@|@subjectDistance@|"
    "@macro@|@focusMode@|@focusPoint@|@width@|@height@|@quality@|@whiteBalance@|@saturation@|@sharpness@|"
    "@contrast@|@customFunctions@|@caption@";
inline constexpr std::string_view kDefaultExportName = "info.txt";

/// The delimiter that the user typed: one of , ; | or ^t for a tab. Nothing for anything else.
std::optional<char> ParseDelimiter(std::string_view typed);
/// How it is typed.
std::string DelimiterText(char delimiter);

enum class ExportMode {
  LinePerImage,  ///< one file with a line for each image
  TextPerImage,  ///< a file with the full text beside each image
};

struct ExportSettings {
  ExportMode mode = ExportMode::LinePerImage;  ///< "ExifExportOnePerImage": 1 is LinePerImage
  std::string format{};                        ///< empty: kDefaultExportFormat
  char delimiter = '|';                        ///< one that ParseDelimiter() gives
  bool header = false;                         ///< a first line with the names of the fields
  std::string output{};                        ///< the table's path; replaced if it exists
};

/// One line of the table without its end. Every line of one format has the same number of fields: what the values have
/// of delimiters, line ends and other control characters becomes blanks, and a field with quotation marks is put into
/// such, with its own ones doubled, as readers of tables expect it. UTF-8.
std::string ExportLine(const ExportSettings& settings, metadata::ExifData& exif, const metadata::ExifOptions& options,
                       const platform::LocaleText& locale);
std::string ExportHeader(const ExportSettings& settings);

/// Where the full text of each of `images` goes: the image's name with ".txt" for its extension, or behind the whole
/// name where two of the images would share a file.
std::vector<std::string> TextFileNames(const std::vector<std::string>& images);

/// Writes what the settings say for all images. The table is written in one pass and appears when it is complete. A
/// text that exists is replaced only if the user says so (Interaction::fileExists). An image is never overwritten.
/// Throws UserError; Cancelled leaves no table.
ToolReport ExportExif(const std::vector<std::string>& images, const ExportSettings& settings,
                      const platform::LocaleText& locale, const EditTools& tools, const ToolRun& run);

}  // namespace ml::imagefiles
