#pragma once

#include "metadata/maker_note.h"

namespace ml::metadata {

/// The note in the EXIF block of a JPEG; those in raw files are not read. See MakerNoteReader.
void ReadOlympusNote(ExifData& data, const MakerNote& note);

}  // namespace ml::metadata
