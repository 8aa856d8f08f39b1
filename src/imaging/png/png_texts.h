#pragma once

#include <cstddef>
#include <vector>

#include "imaging/writers/metadata_blocks.h"

namespace ml::imaging {

/// The text chunks that tell of a picture's source, as they stand in the file. Throws UserError if a text is longer
/// than what is read from such files.
std::vector<std::byte> PngTexts(const MetadataBlocks& blocks);

}  // namespace ml::imaging
