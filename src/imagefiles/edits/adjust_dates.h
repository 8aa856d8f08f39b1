#pragma once

#include <cstdint>
#include <string>

#include "imagefiles/edits/image_edits.h"

namespace ml::imagefiles {

/// AdjustDateTime() for the image `path`; with `shiftFileTime` the time of its last change moves as far. Nothing
/// happens if it is no image. Throws UserError.
void AdjustDates(const std::string& path, std::int64_t seconds, bool shiftFileTime, const EditTools& tools);

}  // namespace ml::imagefiles
