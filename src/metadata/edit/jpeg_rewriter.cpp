#include "metadata/edit/jpeg_rewriter.h"

#include <algorithm>

#include "metadata/byte_writer.h"
#include "metadata/exif_block.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::uint16_t kStartOfImageBytes = 0xffd8;

}  // namespace

std::vector<std::byte> BuildJpegSegment(std::uint8_t marker, std::span<const std::byte> payload) {
  if (payload.size() > kMaxSegmentPayload) throw platform::UserError(messages::kSegmentTooLong);
  ByteWriter out(ByteOrder::Big);
  out.Byte(0xff);
  out.Byte(marker);
  out.Short(static_cast<std::uint16_t>(payload.size() + 2));
  out.Bytes(payload);
  return out.Take();
}

std::optional<JpegSegment> FindExifSegment(const ByteSource& jpeg) {
  JpegSegments segments(jpeg);
  auto segment = segments.Next();
  while (segment && !IsExifSegment(segments, *segment)) segment = segments.Next();
  return segment;
}

int DropSegments(EditedFile& jpeg, const SegmentTest& picked) {
  std::vector<FileRange> ranges;
  JpegSegments segments(jpeg);
  while (const auto segment = segments.Next()) {
    if (picked(segments, *segment)) ranges.push_back(RangeOf(*segment));
  }
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) jpeg.Remove(*range);
  return static_cast<int>(ranges.size());
}

std::uint64_t PlaceBehind(const ByteSource& jpeg, std::initializer_list<std::uint8_t> markers) {
  std::array<std::byte, 2> start{};
  const bool isJpeg =
      jpeg.ReadSome(0, start) == start.size() && ByteView(start, ByteOrder::Big).readShort(0) == kStartOfImageBytes;
  if (!isJpeg) throw platform::UserError(messages::kNoJpeg);
  std::uint64_t place = start.size();
  JpegSegments segments(jpeg);
  auto segment = segments.Next();
  for (; segment && std::ranges::find(markers, segment->marker) != markers.end(); segment = segments.Next()) {
    if (segment->cut) throw platform::UserError(messages::kDamagedForEdit);
    place = segment->End();
  }
  return place;
}

FileRange CompressedData(const ByteSource& jpeg) {
  JpegSegments segments(jpeg);
  while (const auto segment = segments.Next()) {
    if (segment->marker == jpeg_marker::kStartOfScan) return {segment->offset, jpeg.Size() - segment->offset};
  }
  const auto end = std::min(segments.Position(), jpeg.Size());
  return {end, jpeg.Size() - end};
}

}  // namespace ml::metadata
