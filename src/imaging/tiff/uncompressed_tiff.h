#pragma once

#include "imaging/pixel_buffer.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// The first picture of a TIFF file without compression: grey or RGB, 8 or 16 bits a sample, in strips, the
/// samples of a pixel together or in planes. Samples beyond the third are left out. The
/// result is RGB with as many bytes a sample. Throws UserError with the reason otherwise, where rows are missing,
/// and where the picture has more pixels than kMaxPixelsWhole.
PixelBuffer ReadUncompressedTiff(const metadata::ByteSource& source);

}  // namespace ml::imaging
