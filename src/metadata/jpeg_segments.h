#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// The second bytes of the markers that somebody asks for.
namespace jpeg_marker {
inline constexpr std::uint8_t kStartOfImage = 0xd8, kEndOfImage = 0xd9, kStartOfScan = 0xda, kApp0 = 0xe0, kApp1 = 0xe1,
                              kApp2 = 0xe2, kApp13 = 0xed, kComment = 0xfe;
}

/// One marker segment. Positions count from the start of the source.
struct JpegSegment {
  std::uint8_t marker = 0;
  std::uint64_t offset = 0;       ///< of the 0xFF
  std::uint64_t payload = 0;      ///< of the first byte behind the length
  std::uint32_t payloadSize = 0;  ///< as much of it as the file holds
  bool cut = false;               ///< the file ends inside
  std::uint64_t End() const { return payload + payloadSize; }
};

/// Goes through the marker segments in front of the compressed data; the two markers without length, start
/// and end of image, are passed over. The walk ends at the end of the file, behind the first start of scan, at
/// a byte that is no marker and at a length under 2. Reads four bytes a segment and never compressed data.
class JpegSegments {
 public:
  /// Does not own the source. `start` is where the JPEG stream begins.
  explicit JpegSegments(const ByteSource& source, std::uint64_t start = 0) : source_(source), position_(start) {}

  /// The next segment; nothing at the end of the walk. Throws UserError if the file cannot be read.
  std::optional<JpegSegment> Next();
  /// Where the walk stands: once it ended, the rest of the file begins here.
  std::uint64_t Position() const { return position_; }

  /// The payload, as far as the file holds it.
  std::vector<std::byte> Payload(const JpegSegment& segment) const {
    return source_.ReadUpTo(segment.payload, segment.payloadSize);
  }
  bool PayloadStartsWith(const JpegSegment& segment, std::string_view text) const;

 private:
  const ByteSource& source_;
  std::uint64_t position_ = 0;
  bool ended_ = false;
};

}  // namespace ml::metadata
