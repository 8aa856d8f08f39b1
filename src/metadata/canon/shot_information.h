#pragma once

#include "metadata/canon/canon_words.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// Tag 4. Goes by what the camera settings said of the drive.
void ApplyShotInformation(ExifData& data, CanonWords words);

}  // namespace ml::metadata
