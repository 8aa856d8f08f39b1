#pragma once

#include "imaging/pixel_buffer.h"
#include "metadata/edit/edited_file.h"

namespace ml::imaging {

/// Turns the pixels of every picture in the chain of directories, which are stored without compression then and count
/// as upright. Profile, EXIF data with the maker note, IPTC data, XMP and all other tags that do not tell of the stored
/// pixels stay, and so does the place of all that they point to; resolutions and sizes across and down change places.
/// Pictures in sub-directories and layers of an editor are dropped: they would not be turned. Throws LibraryError, with
/// the library's reason and description, and ExifException where a directory is broken; the edit is useless then.
void TurnTiff(metadata::EditedFile& file, Turn turn);

}  // namespace ml::imaging
