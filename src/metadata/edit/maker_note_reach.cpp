#include "metadata/edit/maker_note_reach.h"

#include <algorithm>
#include <array>
#include <optional>

#include "metadata/ifd.h"

namespace ml::metadata {
namespace {

/// Bytes of a name in front of the directory.
constexpr std::array<std::uint64_t, 6> kNameSizes = {0, 6, 8, 10, 12, 18};
constexpr std::uint16_t kMaxEntries = 200;
constexpr std::uint64_t kHeaderSize = 8;

/// Where a directory begins, and what its offsets count from.
struct NoteDirectory {
  ByteView bytes;  ///< from there on
  std::uint64_t base = 0;
  std::uint64_t start = 0;  ///< in the block
};

bool IsDirectory(ByteView bytes) {
  const auto count = bytes.readShort(0);
  if (count == 0 || count > kMaxEntries) return false;
  const auto entries = bytes.From(2);
  for (std::size_t i = 0; i < count; ++i) {
    const auto entry = ReadIfdEntry(entries, i);
    if (TypeSize(entry.type) == 0) return false;
  }
  return true;
}

std::optional<NoteDirectory> DirectoryAt(ByteView tiff, std::uint64_t position) {
  const MemorySource source(tiff.Bytes());
  const auto own = ReadTiffHeader(source, position);
  const auto order = own ? own->order : tiff.Order();
  const auto start = own ? position + own->firstDirectory : position;
  const NoteDirectory found{tiff.WithOrder(order).From(start), own ? position : 0, start};
  return IsDirectory(found.bytes) ? std::optional(found) : std::nullopt;
}

std::optional<NoteDirectory> FindDirectory(ByteView tiff, FileRange note) {
  for (const auto nameSize : kNameSizes) {
    if (nameSize + kHeaderSize > note.size) break;
    try {
      if (auto found = DirectoryAt(tiff, note.position + nameSize)) return found;
    } catch (ExifException) {
      continue;  // no directory
    }
  }
  return std::nullopt;
}

bool Holds(FileRange outer, FileRange inner) { return inner.position >= outer.position && inner.End() <= outer.End(); }

}  // namespace

std::vector<FileRange> FindMakerNoteReach(ByteView tiff, FileRange note) {
  const auto directory = FindDirectory(tiff, note);
  if (!directory) return {};
  const auto entries = directory->bytes.From(2);
  std::vector<FileRange> outside;
  std::size_t inside = 0;
  for (std::size_t i = 0; i < directory->bytes.readShort(0); ++i) {
    const auto entry = ReadIfdEntry(entries, i);
    const FileRange value{directory->base + entry.value, std::uint64_t{entry.count} * TypeSize(entry.type)};
    if (value.size <= 4) continue;
    if (Holds(note, value)) {
      ++inside;
    } else if (value.End() <= tiff.Size()) {
      outside.push_back(value);
    }
  }
  if (inside <= outside.size()) outside.clear();
  return outside;
}

}  // namespace ml::metadata
