#include "platform/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "platform/text.h"

namespace ml::platform {

namespace {

/// What stands in front of a number for strto..: white space and one plus sign, which from_chars does not take.
std::string_view SkipToNumber(std::string_view text) {
  text = Trim(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

}  // namespace

std::string ShortNumber(double value) {
  std::array<char, 64> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 6).ptr;
  return {buffer.data(), end};
}

std::string FixedNumber(double value, int digits) {
  std::array<char, 352> buffer{};  // the largest double has 309 digits in front of the separator
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, digits).ptr;
  return {buffer.data(), end};
}

std::string PaddedNumber(std::int64_t value, std::size_t width) {
  auto digits = std::to_string(value);
  return digits.insert(value < 0 ? 1 : 0, width - std::min(width, digits.size()), '0');
}

std::string ExactNumber(double value) {
  std::array<char, 64> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

std::int32_t LeadingInteger(std::string_view text) {
  text = SkipToNumber(text);
  std::int32_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    return text.front() == '-' ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
  }
  return value;
}

double LeadingNumber(std::string_view text) {
  text = SkipToNumber(text);
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace ml::platform
