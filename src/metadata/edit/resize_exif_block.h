#pragma once

#include <cstdint>

#include "metadata/edit/exif_segment.h"

namespace ml::metadata {

/// Whose blocks are given the new size: of Canon cameras only, as copies between files have it, or of all.
enum class SizedBlocks { Canon, All };

/// Makes a block that describes another picture fit one of `width` x `height` pixels that stands upright: the
/// orientation becomes 1; the resolution, in dots an inch, is written where one above 0 is given; of the blocks
/// that `sized` tells the size in the EXIF directory. Entries that are not there, or not of their usual type, stay so,
/// and a size of 0 is not written. A broken directory costs what stands behind the damage.
void ResizeExifBlock(ExifSegment& segment, int width, int height, std::uint32_t resolution,
                     SizedBlocks sized = SizedBlocks::Canon);

}  // namespace ml::metadata
