#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace ml::platform {

/// How much a text may gain altogether by replacements. Texts out of a file may hold tokens too, each of them a text
/// that holds further ones: a few kilobytes would grow into gigabytes.
inline constexpr std::size_t kMostGrowth = 1U << 20U;

/// How often `token` (not empty) stands in `text`, counted from left to right without overlaps.
std::size_t CountOf(std::string_view token, std::string_view text);

/// Replaces, row by row, every `row.token` in the text by `valueOf(row)`, which is asked for only where the token
/// stands. There is no parser: a value is open to the rows that follow, and what no row names stays as it is. So does
/// a token whose values would let the text gain more than `mostGrowth` bytes.
template <class Rows, class ValueOf>
std::string ReplaceInOrder(std::string_view format, const Rows& rows, ValueOf valueOf,
                           std::size_t mostGrowth = kMostGrowth) {
  std::string text(format);
  const auto longest = format.size() + mostGrowth;
  for (const auto& row : rows) {
    const std::string_view token = row.token;
    const auto count = CountOf(token, text);
    if (count == 0) continue;
    const std::string value(valueOf(row));
    const auto rest = text.size() - count * token.size();
    if (value.size() <= (longest - rest) / count) text = ReplaceAll(text, token, value);
  }
  return text;
}

}  // namespace ml::platform
