#include "metadata/edit/maker_note_reach.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "metadata/ifd.h"

namespace ml::metadata {
namespace {

using namespace std::string_view_literals;

constexpr std::uint16_t kMaxEntries = 200;

/// A note that begins with this name has its directory, or a TIFF header that leads to it, so far behind its start.
struct NoteForm {
  std::string_view name;
  std::size_t start = 0;
  enum class Base { Note, OwnHeader } base = Base::Note;
};
constexpr NoteForm kForms[] = {
    {"Nikon\0\2"sv, 10, NoteForm::Base::OwnHeader},
    {"FUJIFILM"sv, 12, NoteForm::Base::Note},
};

struct NoteDirectory {
  ByteView bytes;  ///< from its count on
  std::uint64_t base = 0;
};

bool IsDirectory(ByteView bytes) {
  const auto count = bytes.readShort(0);
  if (count == 0 || count > kMaxEntries) return false;
  const auto entries = bytes.From(2);
  for (std::size_t i = 0; i < count; ++i) {
    if (TypeSize(ReadIfdEntry(entries, i).type) == 0) return false;
  }
  return true;
}

NoteDirectory DirectoryOf(ByteView tiff, FileRange note, const NoteForm& form) {
  const auto place = note.position + form.start;
  // Little-endian whatever the order around it.
  if (form.base == NoteForm::Base::Note) return {tiff.WithOrder(ByteOrder::Little).From(place), note.position};
  const auto header = ReadTiffHeader(MemorySource(tiff.Bytes()), place);
  if (!header) throw ExifException::BadHeader;
  return {tiff.WithOrder(header->order).From(place + header->firstDirectory), place};
}

std::optional<NoteDirectory> FindDirectory(ByteView tiff, FileRange note) try {
  const auto bytes = tiff.Sub(note.position, note.size);
  const auto* form = std::ranges::find_if(kForms, [&](const NoteForm& one) { return bytes.StartsWith(one.name); });
  if (form == std::end(kForms)) return std::nullopt;
  const auto found = DirectoryOf(tiff, note, *form);
  return IsDirectory(found.bytes) ? std::optional(found) : std::nullopt;
} catch (ExifException) {
  return std::nullopt;
}

bool Holds(FileRange outer, FileRange inner) { return inner.position >= outer.position && inner.End() <= outer.End(); }

}  // namespace

std::vector<FileRange> FindMakerNoteReach(ByteView tiff, FileRange note) {
  const auto directory = FindDirectory(tiff, note);
  if (!directory) return {};
  const auto entries = directory->bytes.From(2);
  std::vector<FileRange> outside;
  for (std::size_t i = 0; i < directory->bytes.readShort(0); ++i) {
    const auto entry = ReadIfdEntry(entries, i);
    const FileRange value{directory->base + entry.value, std::uint64_t{entry.count} * TypeSize(entry.type)};
    if (value.size > 4 && !Holds(note, value) && value.End() <= tiff.Size()) outside.push_back(value);
  }
  return outside;
}

}  // namespace ml::metadata
