#include <algorithm>
#include <string>
#include <vector>

#include "imagefiles/tools/export_exif.h"
#include "metadata/format_strings/format_strings.h"
#include "platform/text.h"

/// The lines of the table of shooting data.
namespace ml::imagefiles {
namespace {

constexpr std::string_view kTabTyped = "^t";
constexpr char kPlaceholder = '|';
/// Both may stand in a format too, for a delimiter and for a blank.
constexpr std::string_view kDelimiterMark = "!#t#!", kLineEndMark = "!#n#!";

/// The format between its delimiters. It is cut before values are put in, so that none of them can add a field.
std::vector<std::string> FieldFormats(const ExportSettings& settings) {
  const auto format = settings.format.empty() ? std::string(kDefaultExportFormat) : settings.format;
  const auto marked = platform::ReplaceAll(format, kDelimiterMark, std::string(1, settings.delimiter));
  std::vector<std::string> fields(1);
  for (const char c : platform::ReplaceAll(marked, kLineEndMark, " ")) {
    if (c == kPlaceholder || c == settings.delimiter) {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

/// A value that cannot end its field or its line.
std::string Guarded(std::string_view value, char delimiter) {
  constexpr unsigned char kFirstPrintable = ' ', kDelete = 0x7f;
  auto text =
      platform::ReplaceAll(platform::ReplaceAll(platform::ToDisplayUtf8(value), "\r\n", " "), kLineEndMark, " ");
  std::ranges::replace_if(
      text,
      [&](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return c == delimiter || byte < kFirstPrintable || byte == kDelete;
      },
      ' ');
  if (text.find('"') == std::string::npos) return text;
  return '"' + platform::ReplaceAll(text, "\"", "\"\"") + '"';
}

template <class Expand>
std::string Line(const ExportSettings& settings, Expand&& expand) {
  std::string line;
  for (const auto& format : FieldFormats(settings)) {
    line += Guarded(expand(format), settings.delimiter);
    line += settings.delimiter;
  }
  line.pop_back();
  return line;
}

}  // namespace

std::optional<char> ParseDelimiter(std::string_view typed) {
  if (typed == kTabTyped || typed == "\t") return '\t';
  if (typed == "," || typed == ";" || typed == "|") return typed.front();
  return std::nullopt;
}

std::string DelimiterText(char delimiter) {
  return delimiter == '\t' ? std::string(kTabTyped) : std::string(1, delimiter);
}

std::string ExportLine(const ExportSettings& settings, metadata::ExifData& exif, const metadata::ExifOptions& options,
                       const platform::LocaleText& locale) {
  const metadata::FormatContext context{exif, options, locale};
  return Line(settings, [&](const std::string& format) { return metadata::ExpandFormatString(format, context); });
}

std::string ExportHeader(const ExportSettings& settings) {
  return Line(settings, [](const std::string& format) { return metadata::DescribeFormatString(format); });
}

}  // namespace ml::imagefiles
