#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/text.h"

namespace ml::metadata {

enum class ByteOrder { Little, Big };

/// Why a reader gave up. Thrown and caught inside readers only: their entry points keep the fields found so far.
enum class ExifException {
  OutOfBounds,
  BadHeader,
  LimitExceeded,
  DirectoryFull,  ///< of writers: readers would pass over a directory with so many entries
};

/// Bytes of a file with their byte order. Does not own them: keep the buffer alive. Offsets count from the
/// start of this view, so the TIFF block of a JPEG is simply a Sub() of its segment. All parsing goes
/// through this class; a range that is not wholly inside throws ExifException::OutOfBounds.
class ByteView {
 public:
  ByteView() = default;
  ByteView(std::span<const std::byte> bytes, ByteOrder order) noexcept : bytes_(bytes), order_(order) {}

  std::size_t Size() const noexcept { return bytes_.size(); }
  bool Empty() const noexcept { return bytes_.empty(); }
  ByteOrder Order() const noexcept { return order_; }
  ByteView WithOrder(ByteOrder order) const noexcept { return {bytes_, order}; }
  std::span<const std::byte> Bytes() const noexcept { return bytes_; }

  /// The `length` bytes at `offset`.
  ByteView Sub(std::size_t offset, std::size_t length) const {
    if (offset > Size() || length > Size() - offset) throw ExifException::OutOfBounds;  // a sum could wrap
    return {bytes_.subspan(offset, length), order_};
  }
  /// Everything from `offset` on; `offset` may be the end.
  ByteView From(std::size_t offset) const {
    if (offset > Size()) throw ExifException::OutOfBounds;
    return {bytes_.subspan(offset), order_};
  }

  std::uint8_t readByte(std::size_t offset) const { return static_cast<std::uint8_t>(Unsigned(offset, 1)); }
  std::uint16_t readShort(std::size_t offset) const { return static_cast<std::uint16_t>(Unsigned(offset, 2)); }
  std::uint32_t readLong(std::size_t offset) const { return static_cast<std::uint32_t>(Unsigned(offset, 4)); }
  std::uint64_t readLong64(std::size_t offset) const { return Unsigned(offset, 8); }
  /// The bytes as text, zeros included.
  std::string_view Text() const noexcept { return platform::AsText(bytes_); }
  std::string_view Text(std::size_t offset, std::size_t length) const { return Sub(offset, length).Text(); }
  /// Whether the bytes at `offset` are there and equal `text`.
  bool StartsWith(std::string_view text, std::size_t offset = 0) const noexcept {
    return offset <= Size() && text.size() <= Size() - offset && Text().substr(offset, text.size()) == text;
  }

 private:
  std::uint64_t Unsigned(std::size_t offset, std::size_t width) const {
    const auto part = Sub(offset, width).bytes_;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
      value = value << 8 | std::to_integer<std::uint64_t>(part[order_ == ByteOrder::Big ? i : width - 1 - i]);
    }
    return value;
  }

  std::span<const std::byte> bytes_;
  ByteOrder order_ = ByteOrder::Big;
};

}  // namespace ml::metadata
