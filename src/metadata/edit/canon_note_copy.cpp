#include "metadata/edit/canon_note_copy.h"

#include <vector>

#include "metadata/edit/value_order.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kMaxNote = 8000, kMaxEntries = 47;
constexpr std::size_t kInEntry = 4, kValueOffset = 8;

}  // namespace

std::optional<IfdBuilder> CopyCanonNote(const ExifData& data, const ByteSource& file, ByteOrder order) {
  if (data.makerNoteOffset == 0 || data.makerNoteCount == 0 || data.makerNoteCount >= kMaxNote) return std::nullopt;
  const auto fileOrder = data.littleEndian ? ByteOrder::Little : ByteOrder::Big;
  IfdBuilder note(order);
  std::size_t total = 0;
  const auto copy = [&](const IfdEntry& entry) {
    const auto size = std::uint64_t{entry.count} * TypeSize(entry.type);
    if (size == 0 || size > kMaxNote - total) return Visit::Continue;
    const auto place = size <= kInEntry ? entry.position + kValueOffset : std::uint64_t{entry.rawValue};
    auto bytes = file.ReadUpTo(place, static_cast<std::size_t>(size));
    if (bytes.size() != size) return Visit::Continue;
    total += bytes.size();
    if (fileOrder != order) TurnNumbers(bytes, entry.type);
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
