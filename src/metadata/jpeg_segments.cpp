#include "metadata/jpeg_segments.h"

#include <algorithm>
#include <array>

namespace ml::metadata {

std::optional<JpegSegment> JpegSegments::Next() {
  std::array<std::byte, 4> head{};
  while (!ended_) {
    const auto present = source_.ReadSome(position_, head);
    const ByteView view(std::span<const std::byte>(head).first(present), ByteOrder::Big);
    if (present < 2 || view.readByte(0) != 0xff) break;
    const auto marker = view.readByte(1);
    if (marker == 0xff) {  // any number of these may stand in front of a marker
      ++position_;
      continue;
    }
    if (marker == jpeg_marker::kStartOfImage || marker == jpeg_marker::kEndOfImage) {
      position_ += 2;
      continue;
    }
    if (present < 4 || view.readShort(2) < 2) break;
    JpegSegment segment{.marker = marker, .offset = position_, .payload = position_ + 4};
    const std::uint64_t rest = source_.Size() - std::min(source_.Size(), segment.payload);
    const std::uint32_t declared = view.readShort(2) - 2U;
    segment.payloadSize = static_cast<std::uint32_t>(std::min<std::uint64_t>(declared, rest));
    segment.cut = segment.payloadSize < declared;
    position_ = segment.End();
    ended_ = marker == jpeg_marker::kStartOfScan;
    return segment;
  }
  ended_ = true;
  return std::nullopt;
}

bool JpegSegments::PayloadStartsWith(const JpegSegment& segment, std::string_view text) const {
  if (segment.payloadSize < text.size()) return false;
  const auto start = source_.ReadUpTo(segment.payload, text.size());
  return ByteView(start, ByteOrder::Big).StartsWith(text);
}

}  // namespace ml::metadata
