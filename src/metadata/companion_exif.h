#pragma once

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

/// JPEG files, and the formats whose shooting data stand in a JPEG beside them, the ".thm" file.
namespace ml::metadata {

/// The segments of a JPEG, then its IPTC data. Throws as ReadJpegSegments.
void ReadJpegWithIptc(ExifData& data, const ByteSource& file);
/// A CRW: its companion, whose size is not that of the picture, then what its own heaps know better or alone. Throws
/// UserError for broken heaps.
void ReadCrwWithCompanion(ExifData& data, const ByteSource& file);
/// An AVI: its companion, without its size.
void ReadAviCompanion(ExifData& data, const ByteSource& file);

}  // namespace ml::metadata
