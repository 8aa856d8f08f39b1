#pragma once

#include "metadata/exif_data.h"

namespace ml::metadata {

/// Takes over what `from` knows of camera, exposure, lens, drive and picture, and `data` does not.
void AddUnknownFields(ExifData& data, const ExifData& from);

}  // namespace ml::metadata
