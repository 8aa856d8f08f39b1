#pragma once

#include <cstddef>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// An EXIF segment that says what a record knows, for a file whose source has none: from its length field on, as
/// ExifData::exifBlock is kept. Little-endian, with a first and an EXIF directory and for a Canon camera its private
/// note. Upright, and without a thumbnail. Texts have room for an edit: the description 32 bytes, the comment 264 with
/// its code, both more where the record's are longer, up to what a segment holds beside the rest. Dates are written
/// only if they were recorded and have 19 characters. The note is the camera's own if `source`, the file that was read,
/// is given and holds one of usual size.
std::vector<std::byte> BuildExifBlock(const ExifData& data, const ByteSource* source = nullptr);

}  // namespace ml::metadata
