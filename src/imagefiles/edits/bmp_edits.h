#pragma once

#include "imagefiles/edits/image_edits.h"

namespace ml::imagefiles {

/// Moves the pixels of the file; none is changed.
void RotateBmp(ImageFile& file, imaging::Turn turn, const EditTools& tools);

}  // namespace ml::imagefiles
