#pragma once

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// Decodes the merged picture of a PSD file (version 1, or 2 for large documents), raw or PackBits, 8 or 16 bits a
/// sample (of 16 the high byte counts): RGB, CMYK without a profile, indexed, grey and duotone (shown grey). Further
/// channels are left out: where the document is transparent the merged picture already lies over white. Throws
/// LibraryError with the reason if the picture is of another kind, cut off before its first row or over
/// kMaxPixelsWhole.
DecodedPicture DecodePsd(const metadata::ByteSource& source);

}  // namespace ml::imaging
