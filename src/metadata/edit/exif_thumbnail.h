#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "metadata/edit/exif_segment.h"

namespace ml::metadata {

/// Makes the picture of a thumbnail as a JPEG stream of the given quality, 0..100. Asked several times at
/// most. Nothing stands for no picture.
using ThumbnailMaker = std::function<std::vector<std::byte>(int quality)>;

/// Gives the segment a thumbnail of the best quality for which there is room, with a directory for it where there is
/// none. False, with nothing changed, if none fits or the segment cannot be understood.
bool ReplaceThumbnail(ExifSegment& segment, const ThumbnailMaker& make);

}  // namespace ml::metadata
