#pragma once

#include "imaging/writers/pixel_rows.h"
#include "metadata/edit/exif_thumbnail.h"

namespace ml::imaging {

/// Makes the thumbnail of EXIF data, at most 160 pixels a side, when first asked. Does not own the pixels.
metadata::ThumbnailMaker ThumbnailOf(const PixelRows& pixels);

}  // namespace ml::imaging
