#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// Numbers to text and back, always with "." as decimal separator.
namespace ml::platform {

/// At most six significant digits, as printf's "%g" writes them.
std::string ShortNumber(double value);
/// `digits` (0..17) places behind the separator, as printf's "%.1f" writes them.
std::string FixedNumber(double value, int digits);
/// At least `width` characters, with zeros in front, as printf's "%07d" writes them.
std::string PaddedNumber(std::int64_t value, std::size_t width);
/// As many digits as the same double needs when read back ("0.7", "1", "0.1").
std::string ExactNumber(double value);

/// The integer at the front of `text`, after white space, as atoi reads it: 0 if there is none, and cut to
/// the range of 32 bits.
std::int32_t LeadingInteger(std::string_view text);
/// The decimal number at the front, as atof reads it: 0 if there is none.
double LeadingNumber(std::string_view text);

/// The number that all of `text` is, digits of `base` for an integer; blanks and a plus sign are none.
template <class Number, class... Base>
std::optional<Number> WholeNumber(std::string_view text, Base... base) {
  Number number{};
  const auto* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base...);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace ml::platform
