#pragma once

#include "metadata/byte_view.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// Adds what an XMP packet tells of the shot where the record says nothing yet. Reads elements one after the other, up
/// to the first zero byte behind the first of them, and the attributes of those that describe a resource. Takes time in
/// proportion to the packet, and never fails.
void ReadXmp(ExifData& data, ByteView packet);

}  // namespace ml::metadata
