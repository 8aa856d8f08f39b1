#pragma once

#include "metadata/exif_data.h"

namespace ml::rawconvert {

/// Throws UserError with the sentence for it if raw conversion does not know the camera.
void RequireConvertible(const metadata::ExifData& exif);

}  // namespace ml::rawconvert
