#pragma once

#include <string>

#include "imagefiles/edits/image_edits.h"

namespace ml::imagefiles {

/// Makes the ICC profile in the file `profilePath` that of a JPEG file; the picture itself is not converted. False if
/// there is no segment in the file beside which it could stand; it is left alone then. Throws UserError, also for a
/// profile that no colour engine would open.
bool EmbedIccProfile(ImageFile& file, const std::string& profilePath, const EditTools& tools);

}  // namespace ml::imagefiles
