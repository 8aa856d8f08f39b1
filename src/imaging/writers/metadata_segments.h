#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "imaging/writers/metadata_blocks.h"
#include "imaging/writers/pixel_rows.h"

namespace ml::imaging {

/// The segments that a JPEG of the picture has between its JFIF segment and the data: EXIF data of this size, upright,
/// with a thumbnail and the comment, further APP1 segments, IPTC data, and the profile. `resolution` is in dots an
/// inch, 0 for the source's. Throws UserError if IPTC data or profile are too long for segments.
std::vector<std::byte> MetadataSegments(const PixelRows& pixels, const MetadataBlocks& blocks, int resolution);

/// The same EXIF data from their TIFF header on, for other formats. Nothing without a source.
std::optional<std::vector<std::byte>> ExifForBox(const PixelRows& pixels, const MetadataBlocks& blocks, int resolution);

}  // namespace ml::imaging
