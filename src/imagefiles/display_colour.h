#pragma once

#include <string>

#include "imagefiles/colour_options.h"
#include "imagefiles/image_file.h"
#include "imaging/pixel_buffer.h"

namespace ml::imagefiles {

/// Turns the 8-bit picture that `file` gave into the monitor's space. Without a monitor profile, without a source
/// profile, or where either cannot be used, the picture stays as it is: returns whether it was changed.
/// Not for one in black and white.
bool ColourManagePicture(imaging::PixelBuffer& picture, ImageFile& file, const ColourOptions& options);

/// The same for a thumbnail of the file at `path`, by the rules for thumbnails. Safe on several threads at once.
bool ColourManageThumbnail(imaging::PixelBuffer& thumbnail, const std::string& path, const ColourOptions& options);

}  // namespace ml::imagefiles
