#include "metadata/olympus/olympus_note.h"

#include "metadata/note_values.h"

namespace ml::metadata {
namespace {

// Tags 0x201 and 0x202: "Description of Exif file format" by T. Tachibanaya, Olympus MakerNote. Tag 0x1004: the words
// that libexif gives its values. The others: documentation of ExifTool, page "Olympus Tags".
constexpr CodeWord kQualities[] = {{1, "SQ"}, {2, "HQ"}, {3, "SHQ"}, {4, "RAW/TIFF"}};
constexpr CodeWord kMacros[] = {{1, "On"}, {2, "Super Macro"}};
/// Automatic and switched off say less than the standard's tag, which knows whether it fired.
constexpr CodeWord kFlashes[] = {{1, "Red-eye reduction"}, {2, "Fill"}};
constexpr CodeWord kFocusModes[] = {{0, "Auto Focus"}, {1, "Manual Focus"}};
constexpr CodeWord kSharpnesses[] = {{0, "Normal"}, {1, "Hard"}, {2, "Soft"}};
constexpr CodeWord kContrasts[] = {{0, "High"}, {1, "Normal"}, {2, "Low"}};

constexpr NoteWordRow kRows[] = {
    {0x0201, &ExifData::imageQuality, kQualities, "Unknown"},
    {0x0202, &ExifData::macroFocus, kMacros},
    {0x1004, &ExifData::flash, kFlashes},
    {0x100b, &ExifData::afMode, kFocusModes},
    {0x100f, &ExifData::sharpness, kSharpnesses},
    {0x1029, &ExifData::contrast, kContrasts},
};

}  // namespace

OlympusHead ReadOlympusHead(ByteView start) {
  constexpr std::size_t kOrderMark = 8;
  if (start.StartsWith("OLYMPUS")) {
    return {12, start.StartsWith("MM", kOrderMark) ? ByteOrder::Big : ByteOrder::Little};
  }
  return {start.StartsWith("OLYMP") ? 8U : 0U, std::nullopt};
}

void ReadOlympusNote(ExifData& data, const MakerNote& note) {
  if (note.form != MakerNoteForm::Block) return;
  const auto start = note.source.ReadUpTo(note.offset, kLongestOlympusHead);
  const auto head = ReadOlympusHead(ByteView(start, ByteOrder::Big));
  const auto order = head.order.value_or(note.order);
  IfdWalker walker(note.source, order, {.followNext = false});
  walker.Walk(NoteDirectoryOffset(note, head.directory), [&](const IfdEntry& entry) {
    TakeNoteWord(data, kRows, entry, order);
    return Visit::Continue;
  });
}

}  // namespace ml::metadata
