#pragma once

#include <cstdint>

#include "metadata/byte_source.h"
#include "metadata/edit/edited_file.h"
#include "metadata/tiff_raw.h"

namespace ml::metadata {

/// A TIFF structure with shooting data in it.
struct ExifOrigin {
  const ByteSource& source;
  std::uint64_t base = 0;  ///< where its TIFF header stands
  TiffMagic magic = TiffMagic::Required;
};

/// Makes the shooting data of another file those of a TIFF file: camera, date and rights in its first directory, the
/// EXIF directory, and the position where `origin` knows one. Everything else in the file stays at its place, a
/// description and the size of the picture too. A maker's note comes along where it can be read at another place:
/// Canon's is put together anew, of the others those that count from their own start. Throws ExifException, with
/// nothing changed: BadHeader if one of the two is no TIFF structure, OutOfBounds if its first directory is cut, or
/// `origin` has no EXIF directory, LimitExceeded and DirectoryFull if there is no room.
void WriteTiffExif(EditedFile& tiff, const ExifOrigin& origin);

}  // namespace ml::metadata
