#pragma once

#include <cstddef>
#include <cstring>

/// Pixels of bitmap rows of any depth. Those of less than a byte fill it from its highest bits on.
namespace ml::imaging {

/// Bytes of a row, padded to four.
constexpr std::size_t BmpRowBytes(std::size_t width, int bits) {
  return (width * static_cast<std::size_t>(bits) + 31) / 32 * 4;
}

constexpr int ShiftOfPixel(std::size_t x, int bits) {
  const auto inByte = static_cast<int>(x % static_cast<std::size_t>(8 / bits));
  return 8 - bits - inByte * bits;
}
/// `bits` below 8.
constexpr unsigned GetSmallPixel(const std::byte* row, std::size_t x, int bits) {
  const auto byte = std::to_integer<unsigned>(row[x * static_cast<std::size_t>(bits) / 8]);
  return byte >> ShiftOfPixel(x, bits) & ((1U << bits) - 1);
}
/// Into a pixel that is still 0.
constexpr void PutSmallPixel(std::byte* row, std::size_t x, int bits, unsigned value) {
  row[x * static_cast<std::size_t>(bits) / 8] |= static_cast<std::byte>(value << ShiftOfPixel(x, bits));
}

inline void CopyPixel(const std::byte* from, std::size_t fromX, std::byte* to, std::size_t toX, int bits) {
  if (bits < 8) {
    PutSmallPixel(to, toX, bits, GetSmallPixel(from, fromX, bits));
  } else {
    const auto size = static_cast<std::size_t>(bits / 8);
    std::memcpy(to + toX * size, from + fromX * size, size);
  }
}

}  // namespace ml::imaging
