#include "metadata/edit/icc_writer.h"

#include <algorithm>
#include <ranges>
#include <string_view>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/jpeg_segments.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kName = "ICC_PROFILE";
constexpr std::size_t kHead = 14;  ///< of the payload: the name with its zero, number and count

std::vector<std::byte> Segments(std::span<const std::byte> profile) {
  const auto count = (profile.size() + kIccSegmentData - 1) / kIccSegmentData;
  if (count == 0 || count > kMaxIccSegments) throw platform::UserError(messages::kProfileTooLong);
  ByteWriter out(ByteOrder::Big);
  for (std::size_t i = 0; i < count; ++i) {
    const auto start = i * kIccSegmentData;
    const auto part = profile.subspan(start, std::min(kIccSegmentData, profile.size() - start));
    out.Byte(0xff);
    out.Byte(jpeg_marker::kApp2);
    out.Short(static_cast<std::uint16_t>(2 + kHead + part.size()));
    out.Text(kName);
    out.Byte(0);
    out.Byte(static_cast<std::uint8_t>(i + 1));
    out.Byte(static_cast<std::uint8_t>(count));
    out.Bytes(part);
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
      old.push_back({segment->offset, segment->End() - segment->offset});
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
