#include "metadata/casio/casio_note.h"

#include "metadata/note_values.h"

namespace ml::metadata {
namespace {

// "Casio Makernote Format Specification" of the PHP JPEG Metadata Toolkit, type 1; the recording modes from 7 on, the
// spot focus and the levels from 16 on: documentation of ExifTool, page "Casio Tags".
constexpr CodeWord kRecordingModes[] = {{2, "Panorama"}, {3, "Night Scene"},  {4, "Portrait"},  {5, "Landscape"},
                                        {7, "Panorama"}, {10, "Night Scene"}, {15, "Portrait"}, {16, "Landscape"}};
constexpr CodeWord kQualities[] = {{1, "Economy"}, {2, "Normal"}, {3, "Fine"}};
constexpr CodeWord kFocusModes[] = {{2, "Macro"}, {3, "Auto AF"}, {4, "Manual Focus"}, {5, "Infinity"}, {7, "Spot AF"}};
constexpr CodeWord kFlashes[] = {{1, "Auto"}, {2, "On"}, {3, "Off"}, {4, "Red Eye Reduction"}};
constexpr CodeWord kWhiteBalances[] = {{1, "Auto"},        {2, "Tungsten"}, {3, "Daylight"},
                                       {4, "Fluorescent"}, {5, "Shade"},    {0x81, "Manual"}};
constexpr CodeWord kLevels[] = {{0, "Normal"}, {1, "Low"}, {2, "High"}, {16, "Normal"}, {17, "High"}, {18, "Low"}};

constexpr NoteWordRow kRows[] = {
    {0x01, &ExifData::exposureMode, kRecordingModes},
    {0x02, &ExifData::imageQuality, kQualities},
    {0x03, &ExifData::afMode, kFocusModes},
    {0x04, &ExifData::flash, kFlashes},
    {0x07, &ExifData::whiteBalance, kWhiteBalances},
    {0x0b, &ExifData::sharpness, kLevels},
    {0x0c, &ExifData::contrast, kLevels},
    {0x0d, &ExifData::saturation, kLevels},
};

/// More entries than any such directory has: the count was taken in the wrong byte order.
constexpr std::uint32_t kTooManyEntries = 0x100;

}  // namespace

void ReadCasioNote(ExifData& data, const MakerNote& note) {
  if (note.form != MakerNoteForm::Block) return;
  const auto bytes = note.source.ReadUpTo(note.offset, 3);
  if (ByteView(bytes, ByteOrder::Big).StartsWith("QVC")) return;
  // Cameras write the note big-endian in blocks of either order.
  const bool big = note.source.ReadNumber(note.offset, 2, ByteOrder::Big) < kTooManyEntries;
  IfdWalker walker(note.source, big ? ByteOrder::Big : note.order, {.followNext = false});
  walker.Walk(NoteDirectoryOffset(note, 0), [&](const IfdEntry& entry) {
    TakeNoteWord(data, kRows, entry, walker.Order());
    return Visit::Continue;
  });
}

}  // namespace ml::metadata
