#include "metadata/edit/iptc_jpeg.h"

#include <ranges>

#include "metadata/byte_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/iptc_resource.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/jpeg_iptc_place.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

using Bytes = std::vector<std::byte>;
using Place = JpegIptcPlace;

/// A segment with image resources; nothing without any.
Bytes Segment(std::span<const std::byte> resources) {
  if (resources.empty()) return {};
  if (resources.size() + kResourcesMark.size() > kMaxSegmentPayload) throw platform::UserError(messages::kIptcTooLong);
  ByteWriter out(ByteOrder::Big);
  out.Text(kResourcesMark);
  out.Bytes(resources);
  return BuildJpegSegment(jpeg_marker::kApp13, out.View());
}

Bytes Joined(Bytes first, const Bytes& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

/// The bytes of `area` without those of `left`, which lies in it.
Bytes Without(const ByteSource& file, const FileRange& area, const FileRange& left) {
  const auto before = file.Read(area.position, left.position - area.position);
  return Joined(before, file.Read(left.End(), area.End() - left.End()));
}

/// The segment with the new resource at the old one's place or in front. Where the others leave no room, it gets a
/// segment of its own in front of them.
Bytes WithResource(const ByteSource& file, const Place& place, const Bytes& resource) {
  const auto old = place.resource.size > 0 ? place.resource : FileRange{place.area.position, 0};
  auto others = Without(file, place.area, old);
  if (!resource.empty() && others.size() + resource.size() + kResourcesMark.size() > kMaxSegmentPayload) {
    return Joined(Segment(resource), Segment(others));
  }
  const auto at = others.begin() + static_cast<std::ptrdiff_t>(old.position - place.area.position);
  others.insert(at, resource.begin(), resource.end());
  return Segment(others);
}

void ReplaceSegment(EditedFile& file, const JpegSegment& segment, const Bytes& bytes) {
  file.Replace(RangeOf(segment), bytes);
}

/// What the old resource filled of the segments behind the first.
void RemoveRest(EditedFile& file, const Place& place) {
  for (const auto& rest : std::views::reverse(place.rest)) {
    const auto start = rest.segment.payload + kResourcesMark.size();
    ReplaceSegment(file, rest.segment, Segment(Without(file, {start, rest.segment.End() - start}, rest.used)));
  }
}

}  // namespace

void WriteJpegIptc(EditedFile& file, const IptcBlock& block) {
  JpegImageData(file);
  const auto place = FindJpegIptc(file);
  const auto resource = BuildIptcResource(block, file, place ? place->resource : FileRange());
  if (!place || place->kind == Place::Kind::Foreign) {
    // What was found in a foreign segment, if only by chance, is no longer read once there is one in front.
    if (!resource.empty())
      file.Insert(place ? place->segment.offset : PlaceBehind(file, {jpeg_marker::kApp0, jpeg_marker::kApp1}),
                  Segment(resource));
    return;
  }
  if (place->kind == Place::Kind::Datasets) return ReplaceSegment(file, place->segment, Segment(resource));
  if (resource.empty() && place->resource.size == 0) return;
  const auto segment = WithResource(file, *place, resource);
  RemoveRest(file, *place);
  ReplaceSegment(file, place->segment, segment);
}

}  // namespace ml::metadata
