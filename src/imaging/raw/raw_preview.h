#pragma once

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// Develops a raw file at half size, as it was shot and not turned, for files without an embedded preview. Full
/// width and height are those of the sensor's picture. Throws LibraryError with the reason if there is no sensor
/// data, or it is over kMaxPixelsWhole.
DecodedPicture DecodeRawPreview(const metadata::ByteSource& source);

}  // namespace ml::imaging
