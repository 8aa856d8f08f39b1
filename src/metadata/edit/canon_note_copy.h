#pragma once

#include <optional>

#include "metadata/edit/ifd_builder.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// The private note of a TIFF-like raw file, by the place that its record remembers, with every value as the camera
/// wrote it but in the order of bytes asked for. Nothing if there is none, or it is longer than such a camera's: over
/// 8,000 bytes or over 47 entries; values that are not in the file are left out. Throws UserError if the file cannot be
/// read.
std::optional<IfdBuilder> CopyCanonNote(const ExifData& data, const ByteSource& file, ByteOrder order);

}  // namespace ml::metadata
