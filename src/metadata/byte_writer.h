#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "metadata/byte_view.h"

namespace ml::metadata {

/// Builds a block of bytes in memory, front to back. A value that depends on what comes later is reserved and
/// patched. Offsets count from the first byte written.
class ByteWriter {
 public:
  explicit ByteWriter(ByteOrder order) : order_(order) {}

  std::size_t Size() const { return bytes_.size(); }
  void Byte(std::uint8_t value) { Append(value, 1); }
  void Short(std::uint16_t value) { Append(value, 2); }
  void Long(std::uint32_t value) { Append(value, 4); }
  void Bytes(std::span<const std::byte> bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }
  /// The bytes of `text`, without a terminator.
  void Text(std::string_view text);
  void Zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }

  /// Writes a zero and gives its offset, for Patch.
  std::size_t ReserveLong();
  /// Puts `value` where the reserved number stands; `offset` came from this writer.
  void PatchLong(std::size_t offset, std::uint32_t value) { Store(offset, value, 4); }

  const std::vector<std::byte>& View() const { return bytes_; }
  /// The finished block; the writer is empty afterwards.
  std::vector<std::byte> Take() { return std::exchange(bytes_, {}); }

 private:
  void Append(std::uint32_t value, std::size_t width);
  void Store(std::size_t offset, std::uint32_t value, std::size_t width);

  ByteOrder order_;
  std::vector<std::byte> bytes_;
};

}  // namespace ml::metadata
