#pragma once

#include <cstddef>
#include <string>

#include "metadata/format_strings/format_tokens.h"
#include "metadata/value_text.h"
#include "platform/numbers.h"

/// The values of the tokens. Unlike the lines of the shooting data they tell zeros too, and have no units.
namespace ml::metadata::token_value {

/// A text as the record has it.
template <auto Member>
std::string Field(const FormatContext& c) {
  return c.exif.*Member;
}
template <auto Member>
std::string Whole(const FormatContext& c) {
  return std::to_string(c.exif.*Member);
}
template <auto Member, int Digits>
std::string Fixed(const FormatContext& c) {
  return platform::FixedNumber(c.exif.*Member, Digits);
}
template <auto Member>
std::string Stops(const FormatContext& c) {
  return FormatStops(c.exif.*Member);
}

std::string Directory(const FormatContext& c);
/// For scripts: every backslash doubled. A backslash in a name is a character like any other.
std::string DirectoryEscaped(const FormatContext& c);
std::string FileName(const FormatContext& c);
std::string Stem(const FormatContext& c);
std::string FileNameLower(const FormatContext& c);
std::string StemLower(const FormatContext& c);
std::string FirstNumber(const FormatContext& c);
/// Kept: the name's first character never counts.
std::string LastNumber(const FormatContext& c);
std::string FileSize(const FormatContext& c);
std::string FileSizeInBytes(const FormatContext& c);

std::string Caption(const FormatContext& c);
std::string ExifComments(const FormatContext& c);
std::string Summary(const FormatContext& c);
std::string Properties(const FormatContext& c);

/// The characters `First` to `Last`, from 1, of the date as text; empty where the last is missing.
std::string DatePart(const FormatContext& c, std::size_t first, std::size_t last);
template <std::size_t First, std::size_t Last>
std::string DatePart(const FormatContext& c) {
  return DatePart(c, First, Last);
}
/// The same of the time, which counts only as a whole.
std::string TimePart(const FormatContext& c, std::size_t first, std::size_t last);
template <std::size_t First, std::size_t Last>
std::string TimePart(const FormatContext& c) {
  return TimePart(c, First, Last);
}
std::string LongDate(const FormatContext& c);

/// "28.0 to 80.0", "0.0" if unknown.
std::string Lens(const FormatContext& c);
std::string SelfTimer(const FormatContext& c);
std::string ImageStabilisation(const FormatContext& c);
std::string SubjectDistance(const FormatContext& c);
std::string SequenceNumber(const FormatContext& c);

/// The last value of the dataset. Values from kIptcFormatStringLimit on are left out, here and below.
std::string IptcLast(const FormatContext& c, int dataset);
template <int Dataset>
std::string IptcLast(const FormatContext& c) {
  return IptcLast(c, Dataset);
}
/// All its values, joined with ", ".
std::string IptcAll(const FormatContext& c, int dataset);
template <int Dataset>
std::string IptcAll(const FormatContext& c) {
  return IptcAll(c, Dataset);
}

}  // namespace ml::metadata::token_value
