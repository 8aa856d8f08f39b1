#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "metadata/byte_view.h"
#include "metadata/maker_note.h"

namespace ml::metadata {

/// How a note begins; other makers build theirs alike, without a name.
struct OlympusHead {
  std::uint32_t directory = 0;     ///< counts from the start of the note
  std::optional<ByteOrder> order;  ///< of a note whose offsets count from its own start; else all is as around it
};
constexpr std::size_t kLongestOlympusHead = 12;
/// `start` are as many bytes of the note, or all there are.
OlympusHead ReadOlympusHead(ByteView start);

/// The note in the EXIF block of a JPEG; those in raw files are not read. See MakerNoteReader.
void ReadOlympusNote(ExifData& data, const MakerNote& note);

}  // namespace ml::metadata
