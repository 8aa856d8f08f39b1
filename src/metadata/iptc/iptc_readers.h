#pragma once

#include <string_view>

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

/// The IPTC data of each kind of file, added to a record of shooting data. None of them fails on what a file holds.
namespace ml::metadata {

/// A run of datasets.
void ReadBareIptc(ExifData& data, ByteView block);
/// The content of the image resource.
void ReadIptcResource(ExifData& data, ByteView block);
/// A whole JPEG file, of which the first APP13 segment counts. Throws UserError if it cannot be read.
void ReadJpegIptc(ExifData& data, const ByteSource& file);
/// The text of a PNG file.
void ReadPngIptc(ExifData& data, std::string_view text);

}  // namespace ml::metadata
