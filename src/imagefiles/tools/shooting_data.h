#pragma once

#include "metadata/exif_data.h"

namespace ml::imagefiles {

/// Whether a record has anything that another file could take over as its shooting data.
inline bool HasShootingData(const metadata::ExifData& exif) {
  return !exif.exifBlock.empty() || exif.exifIfdEntryCount > 0 || exif.dateRecorded || !exif.model.empty() ||
         !exif.shutterSpeed.empty();
}

}  // namespace ml::imagefiles
