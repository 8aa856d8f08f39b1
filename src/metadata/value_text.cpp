#include "metadata/value_text.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/numbers.h"

namespace ml::metadata {
namespace {

struct Fraction {
  double value;
  const char* text;
};
constexpr Fraction kFractions[] = {{0.5, "1/2"}, {0.666667, "2/3"}, {0.33333, "1/3"}};
constexpr double kFractionTolerance = 0.05;

struct DistanceBreak {
  double below;  ///< metres
  int digits;
};
constexpr DistanceBreak kDistanceBreaks[] = {{0.3, 3}, {6, 2}, {20, 1}};

std::string Grouped(std::uint64_t number, const char* unit, const platform::LocaleText& locale) {
  // Such a locale would read the grouping comma as a decimal separator.
  if (number < 1000 || locale.decimalSeparator == ",") return std::to_string(number) + unit;
  return std::to_string(number / 1000) + "," + platform::PaddedNumber(static_cast<std::int64_t>(number % 1000), 3) +
         unit;
}

}  // namespace

std::string FormatStops(double stops) {
  const double size = std::fabs(stops);
  if (size < 0.01) return "0";
  std::string text = stops < 0 ? "-" : "+";
  const double whole = std::floor(size);
  if (whole > 0) text += platform::FixedNumber(whole, 0);
  for (const auto& fraction : kFractions) {
    if (std::fabs(size - whole - fraction.value) > kFractionTolerance) continue;
    return text.append(whole > 0 ? " " : "").append(fraction.text);
  }
  return text;
}

std::string ShutterText(double seconds) {
  if (!(seconds > 0)) return {};
  return seconds < 0.3 ? "1/" + platform::FixedNumber(std::round(1 / seconds), 0) : platform::ShortNumber(seconds);
}

ShutterTime ReadShutterText(const std::string& text) {
  constexpr std::string_view kFraction = "1/";
  if (!text.starts_with(kFraction)) return {.seconds = platform::LeadingNumber(text)};
  return {.fraction = std::max(platform::LeadingInteger(text.substr(kFraction.size())), 0)};
}

std::string ApertureText(double fNumber) { return fNumber > 0 ? platform::FixedNumber(fNumber, 1) : std::string(); }

std::string DistanceText(double metres) {
  if (!(metres > 0.001)) return {};
  const auto* row = std::ranges::find_if(kDistanceBreaks, [&](const auto& limit) { return metres < limit.below; });
  return platform::FixedNumber(metres, row == std::end(kDistanceBreaks) ? 0 : row->digits);
}

std::string ImageNumberText(std::int32_t imageNumber) {
  if (imageNumber <= 0) return {};
  const auto shown = imageNumber % 10'000'000;
  return platform::PaddedNumber(shown / 10'000, 3) + "-" + platform::PaddedNumber(shown % 10'000, 4);
}

std::string FormatFileSize(std::uint64_t bytes, const platform::LocaleText& locale) {
  const auto kilobytes = (bytes + 511) >> 10;
  if (kilobytes < 1024) return std::to_string(kilobytes) + "KB";
  if (kilobytes < 10'240) return Grouped(kilobytes, "KB", locale);
  if (kilobytes < 102'400) return platform::FixedNumber(static_cast<double>(kilobytes) / 1024.0, 1) + "MB";
  return Grouped((bytes + 511) >> 20, "MB", locale);
}

}  // namespace ml::metadata
