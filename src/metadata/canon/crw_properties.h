#pragma once

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// Fills what `data` does not know yet from the records of a CRW file; a companion's word is not changed. The size is
/// that of the picture, never of the companion. Never throws for what the file holds.
void ReadCrwProperties(ExifData& data, const ByteSource& file);

}  // namespace ml::metadata
