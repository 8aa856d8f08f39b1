#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/jpeg_segments.h"

namespace ml::metadata {

/// Bytes of an EXIF segment's payload in front of its TIFF block: "Exif" and two zeros.
inline constexpr std::uint32_t kExifPrefix = 6;
/// The same in a copy of the segment that begins with its length field.
inline constexpr std::uint32_t kExifSegmentHead = 2 + kExifPrefix;

/// The TIFF block of an EXIF segment. All offsets in it count from its first byte.
struct ExifBlock {
  std::uint64_t position = 0;  ///< of that byte in the file
  std::vector<std::byte> tiff;
};

/// Whether the segment is an APP1 that holds EXIF data.
bool IsExifSegment(const JpegSegments& segments, const JpegSegment& segment);
/// So many are looked into: a file may hold any number of them, and cameras write one.
inline constexpr int kMaxExifBlocks = 16;

/// The next EXIF segment of the walk, if any.
std::optional<ExifBlock> NextExifBlock(JpegSegments& segments);

/// The clockwise turn that a value of tag 274 asks for: 0, 90, 180 or 270; nothing for mirrored and unknown ones.
std::optional<int> DegreesOfOrientation(std::uint32_t orientation);

/// What tag 274 of the first block and directory that has a known value says: the clockwise turn that shows
/// the picture upright, 0, 90, 180 or 270. Mirrored orientations count as unknown.
std::optional<int> ReadOrientationFromExif(const ByteSource& source);

/// Positions in the file of the JPEG streams that the directories of all EXIF blocks offer as thumbnails, in
/// their order, a few at most. Nothing is known of what stands there.
std::vector<std::uint64_t> FindExifThumbnails(const ByteSource& source);

}  // namespace ml::metadata
