#include "metadata/edit/relocated_note.h"

#include <optional>
#include <string_view>

#include "metadata/byte_writer.h"
#include "metadata/edit/value_order.h"
#include "metadata/ifd.h"

namespace ml::metadata {
namespace {

/// Notes that begin with a name: how many bytes stand in front of the directory. The others of a known maker that are
/// named count from their own start.
struct NamedNote {
  std::string_view name;
  std::uint32_t head = 0;
};
constexpr NamedNote kNamed[] = {{std::string_view("Nikon\0\1", 7), 8}, {std::string_view("OLYMP\0", 6), 8}};
constexpr std::uint32_t kMaxEntries = 200;
constexpr std::uint32_t kInEntry = 4;
constexpr std::uint32_t kFirstLetter = 'A';

/// Bytes in front of a directory that counts from the TIFF header; nothing if this is none.
std::optional<std::uint32_t> HeadOf(ByteView note) {
  for (const auto& row : kNamed) {
    if (note.StartsWith(row.name)) return row.head;
  }
  if (note.Size() < 2 + kIfdEntrySize) return std::nullopt;
  // A name of letters would be a count of some thousand entries.
  const auto count = note.readShort(0);
  return count > 0 && count <= kMaxEntries && count < kFirstLetter << 8 ? std::optional(0U) : std::nullopt;
}

void AppendValue(ByteWriter& out, ByteView value, std::uint16_t type, bool turned) {
  std::vector<std::byte> bytes(value.Bytes().begin(), value.Bytes().end());
  if (turned) TurnNumbers(bytes, type);
  out.Bytes(bytes);
}

struct NoteEntry {
  IfdEntry entry;
  ByteView value;
};

/// The entries whose values are in the note.
std::vector<NoteEntry> EntriesOf(ByteView note, std::uint32_t head, std::uint32_t offset) {
  std::vector<NoteEntry> entries;
  std::uint64_t total = 0;
  const auto count = note.readShort(head);
  const auto directory = note.From(head + 2);
  for (std::size_t i = 0; i < count && (i + 1) * kIfdEntrySize <= directory.Size(); ++i) {
    const auto entry = ReadIfdEntry(directory, i);
    const auto size = std::uint64_t{TypeSize(entry.type)} * entry.count;
    if (size == 0) continue;
    const bool isInEntry = size <= kInEntry;
    const auto place =
        isInEntry ? std::uint64_t{head} + 2 + i * kIfdEntrySize + 8 : std::uint64_t{entry.rawValue} - offset;
    if (!isInEntry && entry.rawValue < offset) continue;
    if (place > note.Size() || size > note.Size() - place) continue;
    total += size;
    if (total > note.Size()) break;  // no camera has values share their bytes
    entries.push_back({entry, note.Sub(static_cast<std::size_t>(place), static_cast<std::size_t>(size))});
  }
  return entries;
}

}  // namespace

std::vector<std::byte> RelocatedNote(std::span<const std::byte> note, ByteOrder from, std::uint32_t offset,
                                     ByteOrder to, std::uint32_t newOffset) {
  const ByteView view(note, from);
  const auto head = HeadOf(view);
  if (!head || *head + 2 > view.Size()) return {note.begin(), note.end()};
  const auto entries = EntriesOf(view, *head, offset);
  const bool turned = from != to;
  ByteWriter out(to);
  out.Bytes(note.first(*head));
  out.Short(static_cast<std::uint16_t>(entries.size()));
  ByteWriter values(to);
  const auto valuesAt = *head + 2 + entries.size() * kIfdEntrySize + 4;
  for (const auto& [entry, value] : entries) {
    out.Short(entry.tag);
    out.Short(entry.type);
    out.Long(entry.count);
    if (value.Size() <= kInEntry) {
      AppendValue(out, value, entry.type, turned);
      out.Zeros(kInEntry - value.Size());
    } else {
      if (values.Size() % 2 != 0) values.Byte(0);
      out.Long(static_cast<std::uint32_t>(newOffset + valuesAt + values.Size()));
      AppendValue(values, value, entry.type, turned);
    }
  }
  out.Long(0);
  out.Bytes(values.View());
  return out.Take();
}

}  // namespace ml::metadata
