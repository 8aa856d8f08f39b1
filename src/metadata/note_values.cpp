#include "metadata/note_values.h"

#include <algorithm>
#include <limits>

#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::uint16_t kByte = 1, kShort = 3, kLong = 4, kSignedByte = 6, kSignedShort = 8, kSignedLong = 9;

/// Bytes of a number of this type; 0 if it is none.
unsigned WidthOf(std::uint16_t type) {
  switch (type) {
    case kByte:
    case kSignedByte:
      return 1;
    case kShort:
    case kSignedShort:
      return 2;
    case kLong:
    case kSignedLong:
      return 4;
    default:
      return 0;
  }
}

}  // namespace

std::optional<std::uint32_t> EntryNumber(const IfdEntry& entry, ByteOrder order) {
  constexpr unsigned field = 4;
  const auto width = WidthOf(entry.type);
  if (width == 0 || entry.count == 0 || entry.count > field / width) return std::nullopt;
  const auto unused = 8 * (field - width);
  return order == ByteOrder::Big ? entry.rawValue >> unused : entry.rawValue << unused >> unused;
}

std::uint32_t NoteDirectoryOffset(const MakerNote& note, std::uint32_t head) {
  const auto offset = note.offset + head;
  constexpr std::uint64_t farthest = std::numeric_limits<std::uint32_t>::max();
  if (offset > std::min(farthest, note.source.Size())) throw ExifException::OutOfBounds;
  return static_cast<std::uint32_t>(offset);
}

void TakeNoteText(std::string& field, std::string_view text) {
  if (const auto trimmed = platform::TrimRight(text); !trimmed.empty()) field = trimmed;
}

void TakeNoteWord(ExifData& data, std::span<const NoteWordRow> rows, const IfdEntry& entry, ByteOrder order) {
  const auto row = std::ranges::find(rows, entry.tag, &NoteWordRow::tag);
  if (row == rows.end()) return;
  const auto number = EntryNumber(entry, order);
  if (!number) return;
  if (const auto word = WordOf(row->words, *number, row->otherwise); !word.empty()) data.*row->field = word;
}

}  // namespace ml::metadata
