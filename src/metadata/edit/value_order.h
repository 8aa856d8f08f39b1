#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "metadata/ifd.h"

namespace ml::metadata {

/// Turns the numbers of a value of this type from one order of bytes to the other. Types that nobody defined count as
/// bytes.
inline void TurnNumbers(std::span<std::byte> value, std::uint16_t type) {
  const bool ratio = type == static_cast<std::uint16_t>(IfdType::Rational) ||
                     type == static_cast<std::uint16_t>(IfdType::SignedRational);
  const std::size_t width = ratio ? 4 : std::max(TypeSize(type), 1U);
  for (std::size_t at = 0; width > 1 && at + width <= value.size(); at += width) {
    std::ranges::reverse(value.subspan(at, width));
  }
}

}  // namespace ml::metadata
