#include "metadata/byte_writer.h"

#include <cassert>

#include "platform/text.h"

namespace ml::metadata {

void ByteWriter::Text(std::string_view text) { Bytes(platform::AsBytes(text)); }

std::size_t ByteWriter::ReserveLong() {
  Long(0);
  return Size() - 4;
}

void ByteWriter::Append(std::uint32_t value, std::size_t width) {
  Zeros(width);
  Store(Size() - width, value, width);
}

void ByteWriter::Store(std::size_t offset, std::uint32_t value, std::size_t width) {
  assert(offset <= Size() && width <= Size() - offset);
  for (std::size_t i = 0; i < width; ++i) {
    bytes_[offset + (order_ == ByteOrder::Big ? width - 1 - i : i)] = static_cast<std::byte>(value >> (8 * i) & 0xff);
  }
}

}  // namespace ml::metadata
