#include "metadata/xmp_values.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <system_error>

#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kDigits = "0123456789";

/// A number taken off the front, after blanks; nothing if there is none or it does not fit.
std::optional<int> TakeInteger(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  int number = 0;
  const auto [behind, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(behind - text.data()));
  return number;
}

/// "a/b" taken off the front.
std::optional<double> TakeFraction(std::string_view text) {
  const auto above = TakeInteger(text);
  if (!above || !text.starts_with('/')) return std::nullopt;
  text.remove_prefix(1);
  const auto below = TakeInteger(text);
  if (!below) return std::nullopt;
  return *below == 0 ? 0 : static_cast<double>(*above) / *below;
}

double ParsePositive(std::string_view text) {
  if (const auto fraction = TakeFraction(text)) return *fraction;
  const auto whole = TakeInteger(text);
  return whole ? *whole + TakeFraction(text).value_or(0) : 0;
}

}  // namespace

std::string_view FirstLine(std::string_view text) { return platform::Trim(text.substr(0, text.find('\n'))); }

double ParseRational(std::string_view text) {
  text = platform::Trim(text);
  if (!text.starts_with('-')) return ParsePositive(text);
  return -ParsePositive(text.substr(1));
}

std::string XmpDateText(std::string_view text) {
  std::string whole(text);
  if (whole.find('T') == std::string::npos) return whole;
  std::array<int, 6> f{};
  const int count = std::sscanf(whole.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d", &f[0], &f[1], &f[2], &f[3], &f[4], &f[5]);
  if (count < 5) return whole;  // the seconds may be left out
  std::array<char, 80> out{};
  std::snprintf(out.data(), out.size(), "%04d:%02d:%02d %02d:%02d:%02d", f[0], f[1], f[2], f[3], f[4], f[5]);
  return out.data();
}

std::optional<FocalRange> FocalRangeOf(std::string_view lens) {
  const auto lowered = platform::AsciiLower(lens);
  const auto unit = lowered.find("mm");
  if (unit == std::string::npos) return std::nullopt;
  std::string_view text(lowered.data(), unit);
  std::array<double, 2> numbers{};
  std::size_t count = 0;
  for (auto at = text.find_first_of(kDigits); at != std::string_view::npos && count < numbers.size();) {
    text.remove_prefix(at);
    const auto length = std::min(text.find_first_not_of("0123456789."), text.size());
    numbers[count++] = platform::LeadingNumber(text.substr(0, length));
    text.remove_prefix(length);
    at = text.find_first_of(kDigits);
  }
  if (count == 0) return std::nullopt;
  return FocalRange{numbers[0], numbers[count - 1]};
}

}  // namespace ml::metadata
