#include "metadata/byte_source.h"

#include <algorithm>

namespace ml::metadata {

std::vector<std::byte> ByteSource::Read(std::uint64_t offset, std::size_t length) const {
  if (offset > Size() || length > Size() - offset) throw ExifException::OutOfBounds;
  std::vector<std::byte> bytes(length);
  ReadExactly(offset, bytes);
  return bytes;
}

std::vector<std::byte> ByteSource::ReadUpTo(std::uint64_t offset, std::size_t length) const {
  const auto rest = Size() - std::min(Size(), offset);
  std::vector<std::byte> bytes(static_cast<std::size_t>(std::min<std::uint64_t>(length, rest)));
  bytes.resize(ReadSome(offset, bytes));
  return bytes;
}

std::uint32_t ByteSource::ReadNumber(std::uint64_t offset, std::size_t width, ByteOrder order) const {
  std::array<std::byte, 4> bytes{};
  const std::span<std::byte> used(bytes.data(), width);
  ReadExactly(offset, used);
  const ByteView view(used, order);
  return width == 4 ? view.readLong(0) : width == 2 ? view.readShort(0) : view.readByte(0);
}

std::size_t MemorySource::ReadSome(std::uint64_t offset, std::span<std::byte> out) const {
  if (offset >= bytes_.size()) return 0;
  const auto count = std::min<std::size_t>(out.size(), bytes_.size() - static_cast<std::size_t>(offset));
  std::ranges::copy(bytes_.subspan(static_cast<std::size_t>(offset), count), out.begin());
  return count;
}

std::size_t FileSource::ReadSome(std::uint64_t offset, std::span<std::byte> out) const {
  if (out.size() > window_.size()) return file_.Read(offset, out);
  const bool inside = offset >= windowOffset_ && offset - windowOffset_ <= windowSize_ &&
                      out.size() <= windowSize_ - (offset - windowOffset_);
  if (!inside) {
    windowSize_ = 0;  // stays so if the read throws
    windowOffset_ = offset;
    windowSize_ = file_.Read(offset, window_);
  }
  const auto start = static_cast<std::size_t>(offset - windowOffset_);
  const auto count = std::min(out.size(), windowSize_ - start);
  std::copy_n(window_.begin() + static_cast<std::ptrdiff_t>(start), count, out.begin());
  return count;
}

}  // namespace ml::metadata
