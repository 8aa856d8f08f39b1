#pragma once

#include "metadata/canon/canon_words.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// Tag 1. A field whose word lies behind the array is left alone.
void ApplyCameraSettings(ExifData& data, CanonWords words);

}  // namespace ml::metadata
