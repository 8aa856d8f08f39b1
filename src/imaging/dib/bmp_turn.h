#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// A BMP file turned clockwise: depth, palette, masks, resolution, order of the rows and whatever else the file holds
/// stay. Run lengths become plain rows. Throws LibraryError if the file is cut short, holds its picture in another
/// format, or is over kMaxPixelsWhole.
std::vector<std::byte> TurnBmp(std::span<const std::byte> file, Turn turn);

}  // namespace ml::imaging
