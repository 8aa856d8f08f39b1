#pragma once

#include <string>

#include "imaging/writers/write_image.h"

namespace ml::imaging {

/// The picture without compression in one strip behind the header, then the directories; little-endian. See
/// WriteImage.
void WriteTIFF(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
               const WriteOptions& options);

}  // namespace ml::imaging
