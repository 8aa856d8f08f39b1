#include "platform/dates.h"

#include <array>

#include "platform/text.h"

namespace ml::platform {

namespace {

/// One number as scanf's "%Nd" takes it: white space passed over, a sign counted as one of `width`.
bool TakeNumber(std::string_view& text, int width, int& number) {
  while (!text.empty() && std::string_view(" \t\n\v\f\r").find(text.front()) != std::string_view::npos) {
    text.remove_prefix(1);
  }
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
    --width;
  }
  int digits = 0;
  for (number = 0; digits < width && !text.empty() && text.front() >= '0' && text.front() <= '9'; ++digits) {
    number = number * 10 + (text.front() - '0');
    text.remove_prefix(1);
  }
  if (negative) number = -number;
  return digits > 0;
}

bool TakeSeparator(std::string_view& text, char separator) {
  if (separator == ' ') return true;  // a blank in a scanf pattern matches any amount of white space, also none
  if (!text.starts_with(separator)) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<std::tm> ParseDateTime(std::string_view text, DateForm form) {
  const std::string colons = form == DateForm::Exif ? std::string(text) : ReplaceAll(text, ".", ":");
  std::string_view rest = colons;
  std::array<int, 6> fields{};
  constexpr std::array<int, 6> kWidths = {4, 2, 2, 2, 2, 2};
  constexpr std::string_view kSeparators = ":: ::";
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0 && !TakeSeparator(rest, kSeparators[i - 1])) return std::nullopt;
    if (!TakeNumber(rest, kWidths[i], fields[i])) return std::nullopt;
  }
  const auto [year, month, day, hour, minute, second] = fields;
  const bool inRange = year >= 1970 && year <= 2037 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
  if (form != DateForm::DotsUnchecked && !inRange) return std::nullopt;
  std::tm result{};
  result.tm_year = year - 1900;
  result.tm_mon = month - 1;
  result.tm_mday = day;
  result.tm_hour = hour;
  result.tm_min = minute;
  result.tm_sec = second;
  result.tm_isdst = -1;
  return result;
}

std::optional<std::time_t> ToTime(std::tm local) {
  local.tm_isdst = -1;
  local.tm_wday = -1;  // mktime sets it on success: the one sign that -1 is a time and not a failure
  const auto time = std::mktime(&local);
  if (time == -1 && local.tm_wday == -1) return std::nullopt;
  return time;
}

std::tm LocalTime(std::time_t time) {
  std::tm local{};
  ::localtime_r(&time, &local);
  return local;
}

std::string ExifDateText(std::time_t time) {
  std::array<char, 32> buffer{};
  const auto local = LocalTime(time);
  const auto length = std::strftime(buffer.data(), buffer.size(), "%Y:%m:%d %H:%M:%S", &local);
  return {buffer.data(), length};
}

}  // namespace ml::platform
