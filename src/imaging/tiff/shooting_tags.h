#pragma once

#include "imaging/tiff/tiff_tags.h"
#include "imaging/writers/metadata_blocks.h"

namespace ml::imaging {

/// "2003:08:09 10:11:12" as tags hold it; empty if the time was not recorded.
std::string TagDate(const metadata::ExifData& shooting);

/// The directory of shooting data in a TIFF, from the texts of the record.
TiffTags ShootingTags(const metadata::ExifData& shooting, const MakerNote& note);

}  // namespace ml::imaging
