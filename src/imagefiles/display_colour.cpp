#include "imagefiles/display_colour.h"

namespace ml::imagefiles {

// Without transforms yet: every picture stays as it is.
bool ColourManagePicture(imaging::PixelBuffer&, ImageFile&, const ColourOptions&) { return false; }

bool ColourManageThumbnail(imaging::PixelBuffer&, const std::string&, const ColourOptions&) { return false; }

}  // namespace ml::imagefiles
