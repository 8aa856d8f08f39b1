#pragma once

#include "support/tiff_builder.h"

/// Private directories in the EXIF directory of a camera's file, as the makers lay them out.
namespace ml::test {

/// With a TIFF header of its own; the directories around it are big-endian.
TiffBuilder WithNikonNote(const TiffBuilder& note);
/// Without any head, as in the oldest cameras; the directories around it are in the note's order.
TiffBuilder WithBareNikonNote(const TiffBuilder& note);
TiffBuilder WithOlympusNote(const TiffBuilder& note);
/// Little-endian in big-endian directories.
TiffBuilder WithFujiNote(const TiffBuilder& note);
TiffBuilder WithCasioNote(const TiffBuilder& note);

/// Every tag that is read, with settings which show that they were.
TiffBuilder NikonNoteDirectory(Endian order);
TiffBuilder OlympusNoteDirectory();
TiffBuilder FujiNoteDirectory();
TiffBuilder CasioNoteDirectory();

}  // namespace ml::test
