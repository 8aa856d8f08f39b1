#pragma once

#include <cstdint>
#include <string>

#include "platform/locale_text.h"

/// Numbers of the shooting data as the texts that every view of them shows.
namespace ml::metadata {

/// Exposure steps: a sign, the whole stops and the nearest of a half, a third and two thirds ("+1/3", "-1 1/2"); "0"
/// for less than a hundredth. A remainder near none of the three is left out, so that a bare sign may remain.
std::string FormatStops(double stops);
/// "1/250" for times under 0.3 seconds, else the seconds. Empty for what is no time.
std::string ShutterText(double seconds);
/// The way back: 250 of "1/250", or else the seconds; 0 for what the text does not tell.
struct ShutterTime {
  std::int32_t fraction = 0;
  double seconds = 0;
};
ShutterTime ReadShutterText(const std::string& text);
/// "2.8"; empty for what is no f-number.
std::string ApertureText(double fNumber);
/// Metres with fewer decimals the farther away, without the unit; empty below 0.001.
std::string DistanceText(double metres);
/// "012-3456" for a camera's image number above 0, else empty.
std::string ImageNumberText(std::int32_t imageNumber);
/// "512KB", "1,234KB", "12.3MB"; from four digits on grouped unless the locale's decimal separator is a comma.
std::string FormatFileSize(std::uint64_t bytes, const platform::LocaleText& locale);

}  // namespace ml::metadata
