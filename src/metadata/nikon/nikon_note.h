#pragma once

#include "metadata/maker_note.h"

namespace ml::metadata {

/// The note of a NEF or TIFF file or of a JPEG: with a TIFF header of its own behind its head, or a bare directory
/// whose offsets count from where those around it do. Throws ExifException::BadHeader for the head of the oldest
/// compact cameras, behind which other tags stand, and ExifException::LimitExceeded for more than 50 entries. See
/// MakerNoteReader.
void ReadNikonNote(ExifData& data, const MakerNote& note);

}  // namespace ml::metadata
