#pragma once

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// Decodes a PNG file. Transparency is shown over white, of 16-bit samples the high byte counts, gamma and
/// profiles are left alone. Throws LibraryError with the reason if there is no picture, or it is over
/// kMaxPixelsWhole or 30,000 pixels wide or high.
DecodedPicture DecodePng(const metadata::ByteSource& source);

}  // namespace ml::imaging
