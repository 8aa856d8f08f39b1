#pragma once

#include "metadata/maker_note.h"

namespace ml::metadata {

/// The note of Canon cameras: a directory without a header, whose offsets count from the TIFF header. Never throws for
/// what the note holds; damage costs what stands behind it in the note.
void ReadCanonMakerNote(ExifData& data, const MakerNote& note);

}  // namespace ml::metadata
