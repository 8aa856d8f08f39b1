#pragma once

#include "metadata/maker_note.h"

namespace ml::metadata {

/// The older of the two kinds of notes, in the EXIF block of a JPEG. The other begins with "QVC", has other tags and is
/// not read. See MakerNoteReader.
void ReadCasioNote(ExifData& data, const MakerNote& note);

}  // namespace ml::metadata
