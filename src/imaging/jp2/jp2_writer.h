#pragma once

#include <string>

#include "imaging/writers/write_image.h"

namespace ml::imaging {

/// Of 8 or 16 bits a sample; `quality` is the part of the uncompressed size that is used, see RateOf. See WriteImage.
void WriteJPEG2000(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
                   const WriteOptions& options);

}  // namespace ml::imaging
