#pragma once

#include <string>

#include "imaging/writers/write_image.h"

namespace ml::imaging {

/// A picture of colours whose channels are all equal goes out with one. See WriteImage.
void WritePNG(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
              const WriteOptions& options);

}  // namespace ml::imaging
