#pragma once

#include <cstdint>
#include <string_view>

namespace ml::metadata {

/// What is said of a camera whose word, masked, has this value.
struct CustomFunctionLine {
  std::uint8_t word = 0;
  std::uint16_t mask = 0, value = 0;
  std::string_view text;
};

}  // namespace ml::metadata
