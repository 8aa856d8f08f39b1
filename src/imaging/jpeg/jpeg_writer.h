#pragma once

#include <string>

#include "imaging/writers/write_image.h"

namespace ml::imaging {

/// Of pictures of single bytes only; baseline, with a JFIF segment. See WriteImage.
void WriteJPEG(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
               const WriteOptions& options);

}  // namespace ml::imaging
