#include "metadata/jpeg_size.h"

#include <algorithm>

#include "metadata/jpeg_segments.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kFrameHeaderSize = 6;

/// Markers 0xC0 to 0xCF begin a frame, but for the tables of Huffman (C4) and arithmetic coding (CC) and C8.
bool IsFrameHeader(std::uint8_t marker) {
  return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

}  // namespace

std::optional<JpegSize> ReadJpegSize(const ByteSource& source) {
  JpegSegments segments(source);
  while (const auto segment = segments.Next()) {
    if (!IsFrameHeader(segment->marker)) continue;
    const auto bytes = source.ReadUpTo(segment->payload, std::min(segment->payloadSize, kFrameHeaderSize));
    if (bytes.size() < kFrameHeaderSize) return std::nullopt;
    const ByteView header(bytes, ByteOrder::Big);  // sample depth, height, width, components
    return JpegSize{.width = header.readShort(3),
                    .height = header.readShort(1),
                    .components = header.readByte(5),
                    .progressive = (segment->marker & 3) == 2};
  }
  return std::nullopt;
}

}  // namespace ml::metadata
