#include "metadata/jpeg_iptc_place.h"

#include <algorithm>

#include "metadata/psd_resources.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kResourceSignature = "8BIM";
constexpr std::string_view kDatasetMark = "\x1c";

bool StartsWith(const ByteSource& file, std::uint64_t position, std::string_view text) {
  return ByteView(file.ReadUpTo(position, text.size()), ByteOrder::Big).StartsWith(text);
}

/// Of the resource's bytes those that the segment has no room for. A segment that begins with a resource of its own
/// continues none.
void FindRest(JpegSegments& segments, const ByteSource& file, JpegIptcPlace& place) {
  const std::uint64_t declared = file.ReadNumber(place.data.position - 4, 4, ByteOrder::Big);
  auto missing = declared - place.data.size;
  auto pad = declared & 1;
  while (missing > 0) {
    const auto next = segments.Next();
    if (!next || next->marker != jpeg_marker::kApp13 || !segments.PayloadStartsWith(*next, kResourcesMark)) return;
    const FileRange area{next->payload + kResourcesMark.size(), next->payloadSize - kResourcesMark.size()};
    if (StartsWith(file, area.position, kResourceSignature)) return;
    const FileRange data{area.position, std::min(missing, area.size)};
    missing -= data.size;
    const auto padHere = missing == 0 ? std::min(pad, area.size - data.size) : 0;
    place.rest.push_back({*next, data, {data.position, data.size + padHere}});
  }
}

}  // namespace

std::optional<JpegIptcPlace> FindJpegIptc(const ByteSource& file) {
  JpegSegments segments(file);
  auto segment = segments.Next();
  while (segment && segment->marker != jpeg_marker::kApp13) segment = segments.Next();
  if (!segment) return std::nullopt;
  JpegIptcPlace place;
  place.segment = *segment;
  place.area = {segment->payload, segment->payloadSize};
  const bool isMarked = segments.PayloadStartsWith(*segment, kResourcesMark);
  if (isMarked) place.area = {segment->payload + kResourcesMark.size(), segment->payloadSize - kResourcesMark.size()};
  const auto resources = ReadPsdResources(file, place.area, CutResource::Keep);
  if (!isMarked && resources.empty()) {
    place.kind =
        StartsWith(file, segment->payload, kDatasetMark) ? JpegIptcPlace::Kind::Datasets : JpegIptcPlace::Kind::Foreign;
    place.data = place.area;
    return place;
  }
  const auto* iptc = FindPsdResource(resources, psd_resource::kIptc);
  if (iptc == nullptr) return place;
  place.data = iptc->data;
  const auto end = std::min(iptc->data.End() + (iptc->data.size & 1), place.area.End());
  place.resource = {iptc->position, end - iptc->position};
  if (end == place.area.End()) FindRest(segments, file, place);
  return place;
}

}  // namespace ml::metadata
