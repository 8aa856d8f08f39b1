#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/text.h"

namespace ml::test {

enum class Endian { Little, Big };

/// Bytes of a file in the making. Numbers are cut to their width.
class ByteString {
 public:
  explicit ByteString(Endian order) : order_(order) {}

  ByteString& Number(std::uint64_t value, int width) {
    for (int i = 0; i < width; ++i) bytes_ += static_cast<char>(value >> Shift(i, width) & 0xff);
    return *this;
  }
  ByteString& Byte(std::uint64_t value) { return Number(value, 1); }
  ByteString& Short(std::uint64_t value) { return Number(value, 2); }
  ByteString& Long(std::uint64_t value) { return Number(value, 4); }
  ByteString& Text(std::string_view text) {
    bytes_ += text;
    return *this;
  }
  ByteString& Zeros(std::size_t count) {
    bytes_.append(count, '\0');
    return *this;
  }
  /// Zeros up to the next multiple.
  ByteString& Align(std::size_t multiple) { return Zeros((multiple - Size() % multiple) % multiple); }

  /// Over bytes that are there already.
  void Patch(std::size_t at, std::string_view bytes) { bytes_.replace(at, bytes.size(), bytes); }
  void PatchLong(std::size_t at, std::uint64_t value) { Patch(at, ByteString(order_).Long(value).Bytes()); }

  Endian Order() const { return order_; }
  std::size_t Size() const { return bytes_.size(); }
  const std::string& Bytes() const { return bytes_; }
  std::string Take() { return std::move(bytes_); }

 private:
  int Shift(int index, int width) const { return 8 * (order_ == Endian::Big ? width - 1 - index : index); }

  Endian order_;
  std::string bytes_;
};

/// The same bytes.
inline std::vector<std::byte> BytesOf(std::string_view text) {
  const auto bytes = platform::AsBytes(text);
  return {bytes.begin(), bytes.end()};
}

}  // namespace ml::test
