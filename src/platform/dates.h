#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

/// The forms in which dates are read and written. All times are local ones.
namespace ml::platform {

/// How a text is taken by ParseDateTime.
enum class DateForm {
  Exif,           ///< "2003:10:04 12:30:00", year 1970..2037, month 1..12, day 1..31
  DotsAllowed,    ///< the same, "." taken for ":" first
  DotsUnchecked,  ///< the same without the test of the ranges
};

/// The six numbers of a date in EXIF's form, read as scanf("%4d:%2d:%2d %2d:%2d:%2d") reads them: blanks
/// before a number are passed over, what follows the sixth is ignored. Nothing unless all six are there.
std::optional<std::tm> ParseDateTime(std::string_view text, DateForm form = DateForm::Exif);

/// Local time to seconds since 1970, summer time decided by the system; nothing if it cannot be represented.
std::optional<std::time_t> ToTime(std::tm local);
std::tm LocalTime(std::time_t time);

/// "2003:10:04 12:30:00"
std::string ExifDateText(std::time_t time);

}  // namespace ml::platform
