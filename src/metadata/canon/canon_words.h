#pragma once

#include <cstddef>
#include <cstdint>

#include "metadata/byte_view.h"

namespace ml::metadata {

/// An array of 16-bit words, the first of which tells its size. Does not own the bytes.
class CanonWords {
 public:
  explicit CanonWords(ByteView bytes) : bytes_(bytes) {}

  std::size_t Count() const { return bytes_.Size() / 2; }
  bool Has(std::size_t index) const { return index < Count(); }
  /// Throws ExifException::OutOfBounds.
  std::uint16_t operator[](std::size_t index) const { return bytes_.readShort(2 * index); }
  std::int16_t Signed(std::size_t index) const { return static_cast<std::int16_t>((*this)[index]); }

 private:
  ByteView bytes_;
};

constexpr std::uint16_t SwapBytes(std::uint16_t word) { return static_cast<std::uint16_t>(word << 8 | word >> 8); }

}  // namespace ml::metadata
