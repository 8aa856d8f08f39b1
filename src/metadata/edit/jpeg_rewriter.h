#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

#include "metadata/edit/edited_file.h"
#include "metadata/jpeg_segments.h"

/// The segments of a JPEG put in, taken out and replaced. Everything from the compressed data on stays as it stands.
namespace ml::metadata {

/// Bytes that a segment can hold behind its length field.
inline constexpr std::size_t kMaxSegmentPayload = 65'533;

/// Marker, length and payload. Throws UserError if the payload is longer than a segment can be.
std::vector<std::byte> BuildJpegSegment(std::uint8_t marker, std::span<const std::byte> payload);

inline FileRange RangeOf(const JpegSegment& segment) { return {segment.offset, segment.End() - segment.offset}; }

/// The first EXIF segment, if any.
std::optional<JpegSegment> FindExifSegment(const ByteSource& jpeg);

using SegmentTest = std::function<bool(const JpegSegments& segments, const JpegSegment& segment)>;
/// Takes out all segments that the test picks and gives their number.
int DropSegments(EditedFile& jpeg, const SegmentTest& picked);

/// Where new segments go: behind the start of image and those of `markers` that come first. Throws UserError if this is
/// no JPEG or ends inside one of them.
std::uint64_t PlaceBehind(const ByteSource& jpeg, std::initializer_list<std::uint8_t> markers);

/// From the first start of scan to the end of the file; without one, from where the segments end.
FileRange CompressedData(const ByteSource& jpeg);

}  // namespace ml::metadata
