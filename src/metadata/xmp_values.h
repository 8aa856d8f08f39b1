#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Values of an XMP packet.
namespace ml::metadata {

/// Up to the first line end, without white space at either end.
std::string_view FirstLine(std::string_view text);

/// "1/125", "2 1/2" and "5", each with a "-" in front or not; 0 for what is no number. Decimals are not read, and of a
/// fraction over zero the whole part counts.
double ParseRational(std::string_view text);

/// "2003-10-04T12:30:00+02:00" as "2003:10:04 12:30:00", without its zone; any other text as it is.
std::string XmpDateText(std::string_view text);

struct FocalRange {
  double least = 0, most = 0;  ///< millimetres
};
/// The first two numbers in front of "mm" in a lens's name; one number is both ends. Nothing if there is none.
std::optional<FocalRange> FocalRangeOf(std::string_view lens);

}  // namespace ml::metadata
