#pragma once

#include "imaging/decoded_picture.h"
#include "imaging/magick/magick_image.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// Decodes the first picture of a TIFF, GIF or BMP file. Transparency is shown over white, of 16-bit samples the
/// high byte counts, CMYK is turned into colours without a profile. Throws LibraryError with the library's
/// reason and description if there is no picture of that format, or it is over kMaxPixelsWhole.
DecodedPicture DecodeMagick(const metadata::ByteSource& source, MagickFormat format);

}  // namespace ml::imaging
