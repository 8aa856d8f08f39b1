#include "metadata/edit/icc_writer.h"

#include <algorithm>
#include <ranges>
#include <string_view>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kName = "ICC_PROFILE";

std::vector<std::byte> Segments(std::span<const std::byte> profile) {
  const auto count = (profile.size() + kIccSegmentData - 1) / kIccSegmentData;
  if (count == 0 || count > kMaxIccSegments) throw platform::UserError(messages::kProfileTooLong);
  ByteWriter out(ByteOrder::Big);
  for (std::size_t i = 0; i < count; ++i) {
    const auto start = i * kIccSegmentData;
    const auto part = profile.subspan(start, std::min(kIccSegmentData, profile.size() - start));
    ByteWriter payload(ByteOrder::Big);
    payload.Text(kName);
    payload.Byte(0);
    payload.Byte(static_cast<std::uint8_t>(i + 1));
    payload.Byte(static_cast<std::uint8_t>(count));
    payload.Bytes(part);
    out.Bytes(BuildJpegSegment(jpeg_marker::kApp2, payload.View()));
  }
  return out.Take();
}

}  // namespace

bool WriteIccProfile(EditedFile& jpeg, std::span<const std::byte> profile) {
  const auto added = Segments(profile);
  std::vector<FileRange> old;
  std::uint64_t place = 0;  // none yet: a file begins with its start of image
  bool leading = true;
  JpegSegments segments(jpeg);
  while (const auto segment = segments.Next()) {
    if (segment->marker == jpeg_marker::kApp2 && segments.PayloadStartsWith(*segment, kName)) {
      old.push_back(RangeOf(*segment));
      if (place == 0) place = segment->offset;
      continue;
    }
    const bool belongsInFront = segment->marker == jpeg_marker::kApp0 || segment->marker == jpeg_marker::kApp1;
    if (leading && belongsInFront) place = segment->End();
    if (place == 0) place = segment->offset;
    leading = leading && belongsInFront;
  }
  if (place == 0) return false;
  // From the end on: what was found further in front keeps its position.
  bool inserted = false;
  for (const auto& range : std::views::reverse(old)) {
    if (!inserted && range.position < place) {
      jpeg.Insert(place, added);
      inserted = true;
    }
    jpeg.Remove(range);
  }
  if (!inserted) jpeg.Insert(place, added);
  return true;
}

}  // namespace ml::metadata
