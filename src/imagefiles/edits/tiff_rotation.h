#pragma once

#include "imagefiles/edits/image_edits.h"

namespace ml::imagefiles {

/// Turns the pixels of all pictures of a TIFF file, which are written without compression; a file that only looks like
/// one gets another orientation instead. Entry of the format's row.
void RotateTiff(ImageFile& file, imaging::Turn turn, const EditTools& tools);

}  // namespace ml::imagefiles
