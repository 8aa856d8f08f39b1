#include "metadata/nikon/nikon_note.h"

#include "metadata/nikon/nikon_tags.h"
#include "metadata/note_values.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kHeadStart = "Ni";
constexpr std::uint32_t kHeadSize = 10;
constexpr std::uint32_t kMaxEntries = 50;

struct Place {
  std::uint64_t base = 0;       ///< offsets count from here
  std::uint32_t directory = 0;  ///< from there
  ByteOrder order = ByteOrder::Little;
};

Place FindDirectory(const MakerNote& note) {
  const auto start = note.source.ReadUpTo(note.offset, kHeadStart.size());
  if (!ByteView(start, ByteOrder::Big).StartsWith(kHeadStart)) return {0, NoteDirectoryOffset(note, 0), note.order};
  const auto base = note.offset + kHeadSize;
  const auto header = ReadTiffHeader(note.source, base);
  if (!header || !header->IsTiff()) throw ExifException::BadHeader;
  return {base, header->firstDirectory, header->order};
}

}  // namespace

void ReadNikonNote(ExifData& data, const MakerNote& note) {
  const auto place = FindDirectory(note);
  const NikonValues values{data, note.source, place.order, place.base};
  const bool inBlock = note.form == MakerNoteForm::Block;
  IfdWalker walker(note.source, place.order,
                   {.base = place.base, .maxEntries = kMaxEntries, .followNext = false, .visitCutDirectory = inBlock});
  walker.Walk(place.directory, [&](const IfdEntry& entry) {
    TakeNikonTag(values, entry, note.form);
    return Visit::Continue;
  });
}

}  // namespace ml::metadata
