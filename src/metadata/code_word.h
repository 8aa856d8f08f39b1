#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

namespace ml::metadata {

/// What the number of a tag is shown as.
struct CodeWord {
  std::uint32_t code = 0;
  std::string_view word;
};

inline std::string_view WordOf(std::span<const CodeWord> words, std::uint32_t code, std::string_view otherwise) {
  const auto found = std::ranges::find(words, code, &CodeWord::code);
  return found == words.end() ? otherwise : found->word;
}

}  // namespace ml::metadata
