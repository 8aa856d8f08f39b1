#include "metadata/ifd.h"

#include <algorithm>

namespace ml::metadata {

IfdEntry ReadIfdEntry(ByteView directory, std::size_t index) {
  const auto e = directory.Sub(index * kIfdEntrySize, kIfdEntrySize);
  IfdEntry entry{.tag = e.readShort(0), .type = e.readShort(2), .count = e.readLong(4), .rawValue = e.readLong(8)};
  const bool singleShort = entry.Is(IfdType::Short) && entry.count == 1;
  entry.value = singleShort ? e.readShort(8) : entry.rawValue;  // a short stands first in either byte order
  return entry;
}

FileRange IfdValueRange(const IfdEntry& entry, std::uint64_t base) {
  constexpr std::uint64_t kInEntry = 4, kValueField = 8;
  const auto size = std::uint64_t{entry.count} * std::max(TypeSize(entry.type), 1U);
  if (size <= kInEntry) return {entry.position + kValueField, size};
  return {base + entry.rawValue, size};
}

std::vector<std::uint32_t> ReadIfdNumbers(const ByteSource& source, ByteOrder order, const IfdEntry& entry,
                                          FileRange place, std::uint32_t most) {
  const std::size_t width = entry.Is(IfdType::Short) ? 2 : 4;
  const auto bytes = source.ReadUpTo(place.position, std::min<std::uint64_t>(place.size, most * width));
  const ByteView view(bytes, order);
  std::vector<std::uint32_t> numbers;
  numbers.reserve(bytes.size() / width);
  for (std::size_t at = 0; at + width <= view.Size(); at += width) {
    numbers.push_back(width == 2 ? view.readShort(at) : view.readLong(at));
  }
  return numbers;
}

std::optional<TiffHeader> ReadTiffHeader(const ByteSource& source, std::uint64_t base) {
  std::array<std::byte, 8> bytes{};
  if (source.ReadSome(base, bytes) != bytes.size()) return std::nullopt;
  const ByteView marks(bytes, ByteOrder::Big);
  const bool little = marks.StartsWith("II");
  if (!little && !marks.StartsWith("MM")) return std::nullopt;
  const auto view = marks.WithOrder(little ? ByteOrder::Little : ByteOrder::Big);
  return TiffHeader{view.Order(), view.readShort(2), view.readLong(4)};
}

std::uint32_t ReadIfdLink(const ByteSource& source, ByteOrder order, std::uint64_t position) {
  std::array<std::byte, 4> link{};
  return source.ReadSome(position, link) == link.size() ? ByteView(link, order).readLong(0) : 0;
}

std::uint32_t NextDirectory(const ByteSource& source, ByteOrder order, std::uint64_t base, std::uint32_t offset) {
  const auto position = base + offset;
  std::array<std::byte, 2> count{};
  if (source.ReadSome(position, count) != count.size()) return 0;
  return ReadIfdLink(source, order, position + 2 + ByteView(count, order).readShort(0) * kIfdEntrySize);
}

Visit IfdWalker::Walk(std::uint32_t offset, const IfdVisitor& visitor) { return Walk(offset, policy_, visitor); }

Visit IfdWalker::Walk(std::uint32_t offset, const IfdPolicy& policy, const IfdVisitor& visitor) {
  while (offset != 0 && visited_.size() < kMaxDirectories) {
    const auto position = policy.base + offset;
    if (!visited_.insert(position).second) break;
    std::uint32_t next = 0;
    if (WalkOne(position, policy, visitor, next) == Visit::Stop) return Visit::Stop;
    offset = policy.followNext ? next : 0;
  }
  return Visit::Continue;
}

Visit IfdWalker::WalkOne(std::uint64_t position, const IfdPolicy& policy, const IfdVisitor& visitor,
                         std::uint32_t& next) {
  const auto count = source_.ReadNumber(position, 2, order_);
  if (count > policy.maxEntries) throw ExifException::LimitExceeded;
  const std::size_t size = count * kIfdEntrySize;
  const auto bytes = source_.ReadUpTo(position + 2, size);
  if (bytes.size() < size && !policy.visitCutDirectory) throw ExifException::OutOfBounds;
  const ByteView directory(bytes, order_);
  for (std::size_t i = 0; i < count; ++i) {
    auto entry = ReadIfdEntry(directory, i);
    entry.position = position + 2 + i * kIfdEntrySize;
    if (visitor(entry) == Visit::Stop) return Visit::Stop;
  }
  if (policy.followNext) next = ReadIfdLink(source_, order_, position + 2 + size);
  return Visit::Continue;
}

}  // namespace ml::metadata
