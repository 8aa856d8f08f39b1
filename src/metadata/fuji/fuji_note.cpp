#include "metadata/fuji/fuji_note.h"

#include "metadata/exif_values.h"
#include "metadata/note_values.h"

namespace ml::metadata {
namespace {

// Codes and the form of the note: "Fujifilm Makernote Format Specification" of the PHP JPEG Metadata
// Toolkit; the later kinds of fluorescent light, the flash light and the numbered custom settings of the white balance:
// documentation of ExifTool, page "FujiFilm Tags".
constexpr CodeWord kSharpnesses[] = {{1, "Soft"}, {2, "Soft"}, {3, "Normal"}, {4, "Hard"}, {5, "Hard"}};
constexpr CodeWord kWhiteBalances[] = {
    {0x000, "Auto"},        {0x100, "Daylight"},    {0x200, "Cloudy"},      {0x300, "Fluorescent"},
    {0x301, "Fluorescent"}, {0x302, "Fluorescent"}, {0x303, "Fluorescent"}, {0x304, "Fluorescent"},
    {0x400, "Tungsten"},    {0x500, "Flash"},       {0xf00, "Custom"},      {0xf01, "Custom"},
    {0xf02, "Custom"},      {0xf03, "Custom"},      {0xf04, "Custom"},
};
constexpr CodeWord kLevels[] = {{0x000, "Normal"}, {0x100, "High"}, {0x200, "Low"}};
/// Automatic, on and off say less than the standard's tag, which knows whether it fired.
constexpr CodeWord kFlashes[] = {{3, "Red-eye reduction"}};
constexpr CodeWord kMacros[] = {{1, "On"}};
constexpr CodeWord kPictureModes[] = {{0, "Auto"},
                                      {1, "Portrait"},
                                      {2, "Landscape"},
                                      {4, "Sports"},
                                      {5, "Night scene"},
                                      {6, "Program"},
                                      {0x100, "Aperture priority"},
                                      {0x200, "Shutter priority"},
                                      {0x300, "Manual"}};

constexpr std::uint16_t kQuality = 0x1000;
constexpr NoteWordRow kRows[] = {
    {0x1001, &ExifData::sharpness, kSharpnesses},
    {0x1002, &ExifData::whiteBalance, kWhiteBalances},
    {0x1003, &ExifData::saturation, kLevels},
    {0x1004, &ExifData::contrast, kLevels},
    {0x1010, &ExifData::flash, kFlashes},
    {0x1020, &ExifData::macroFocus, kMacros},
    {0x1031, &ExifData::exposureMode, kPictureModes},
};

constexpr std::size_t kDirectoryPlace = 8;  ///< behind "FUJIFILM"; counts from the note's start, as all offsets in it

}  // namespace

void ReadFujiNote(ExifData& data, const MakerNote& note) {
  if (note.form != MakerNoteForm::Block) return;
  const auto bytes = note.source.ReadUpTo(note.offset, kDirectoryPlace + 4);
  const ByteView head(bytes, ByteOrder::Little);  // in big-endian blocks too
  if (!head.StartsWith("FUJIFILM")) return;
  IfdWalker walker(note.source, head.Order(), {.base = note.offset, .followNext = false});
  walker.Walk(head.readLong(kDirectoryPlace), [&](const IfdEntry& entry) {
    if (entry.tag == kQuality) TakeNoteText(data.imageQuality, readIFDstring(note.source, entry, note.offset));
    TakeNoteWord(data, kRows, entry, walker.Order());
    return Visit::Continue;
  });
}

}  // namespace ml::metadata
