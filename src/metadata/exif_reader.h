#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"
#include "metadata/tiff_raw.h"

/// The two readers of TIFF-structured shooting data, and the walk over a JPEG that finds it. They fill what they find
/// and leave the rest of the record alone.
namespace ml::metadata {

/// The EXIF block of a JPEG: `segment` begins with the two bytes of its length. Does nothing where there is no TIFF
/// header. Throws ExifException where the block ends too early; the record keeps what was read until then.
void ReadExifBlock(ExifData& data, std::span<const std::byte> segment);

/// The same without a segment around it, as PNG and JPEG 2000 files hold it: `tiff` begins with the TIFF header, in
/// files of some programs with the start of the segment in front. The record keeps the segment that a JPEG would have,
/// unless it would be too long for one.
void ReadExifTiff(ExifData& data, std::span<const std::byte> tiff);

/// A TIFF file, or a raw file with its TIFF header at `baseOffset`. Reads directories and the values it keeps, never
/// pictures. A broken structure ends the reading without a sign; the record keeps what was read until then.
void ReadTiffFile(ExifData& data, const ByteSource& file, std::uint64_t baseOffset, TiffMagic magic);

/// Finds the EXIF block, which is kept in the record, an XMP packet, and the mark of an ICC profile. Throws
/// ExifException if the EXIF block is broken; what follows it in the file is then not read.
void ReadJpegSegments(ExifData& data, const ByteSource& file);

}  // namespace ml::metadata
