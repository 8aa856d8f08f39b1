#pragma once

#include "imaging/decoded_picture.h"
#include "metadata/byte_view.h"

namespace ml::imaging {

/// Decodes a device-independent bitmap as movies hold it. `format` is the 40-byte bitmap header with the palette
/// behind it, `pixels` the uncompressed rows: 8 bits by the palette, 16 (five a colour), 24 or 32 bits. Throws
/// LibraryError with the reason if it is of another kind, without pixels or over kMaxPixelsWhole.
DecodedPicture DecodeDib(metadata::ByteView format, metadata::ByteView pixels);

}  // namespace ml::imaging
