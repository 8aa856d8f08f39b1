#include "metadata/edit/canon_note_copy.h"

#include <algorithm>
#include <vector>

namespace ml::metadata {
namespace {

constexpr std::uint32_t kMaxNote = 8000, kMaxEntries = 47;
constexpr std::size_t kInEntry = 4, kValueOffset = 8;

/// Bytes of each number of a type, of which a rational is two; 0 for no type.
std::size_t NumberSize(std::uint16_t type) {
  constexpr std::size_t kSizes[] = {0, 1, 1, 2, 4, 4, 1, 1, 2, 4, 4, 4};
  return type < std::size(kSizes) ? kSizes[type] : 0;
}
std::size_t NumbersOf(std::uint16_t type) {
  return type == static_cast<std::uint16_t>(IfdType::Rational) ||
                 type == static_cast<std::uint16_t>(IfdType::SignedRational)
             ? 2
             : 1;
}

void Turn(std::vector<std::byte>& bytes, std::size_t numberSize) {
  for (std::size_t at = 0; at + numberSize <= bytes.size(); at += numberSize) {
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    std::reverse(begin, begin + static_cast<std::ptrdiff_t>(numberSize));
  }
}

}  // namespace

std::optional<IfdBuilder> CopyCanonNote(const ExifData& data, const ByteSource& file, ByteOrder order) {
  if (data.makerNoteOffset == 0 || data.makerNoteCount == 0 || data.makerNoteCount >= kMaxNote) return std::nullopt;
  const auto fileOrder = data.littleEndian ? ByteOrder::Little : ByteOrder::Big;
  IfdBuilder note(order);
  std::size_t total = 0;
  const auto copy = [&](const IfdEntry& entry) {
    const auto numberSize = NumberSize(entry.type);
    const auto size = std::uint64_t{entry.count} * numberSize * NumbersOf(entry.type);
    if (size == 0 || size > kMaxNote - total) return Visit::Continue;
    const auto place = size <= kInEntry ? entry.position + kValueOffset : std::uint64_t{entry.rawValue};
    auto bytes = file.ReadUpTo(place, static_cast<std::size_t>(size));
    if (bytes.size() != size) return Visit::Continue;
    total += bytes.size();
    if (fileOrder != order) Turn(bytes, numberSize);
    note.Raw(entry.tag, entry.type, entry.count, std::move(bytes));
    return Visit::Continue;
  };
  try {
    IfdWalker walker(file, fileOrder, {.maxEntries = kMaxEntries, .followNext = false, .visitCutDirectory = false});
    walker.Walk(data.makerNoteOffset, copy);
  } catch (ExifException) {
    return std::nullopt;
  }
  return note.Empty() ? std::nullopt : std::optional(std::move(note));
}

}  // namespace ml::metadata
