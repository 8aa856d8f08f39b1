#include "metadata/iptc/iptc_readers.h"

#include <iterator>
#include <utility>

#include "metadata/iptc/iptc_block.h"
#include "metadata/iptc/iptc_png_text.h"
#include "metadata/jpeg_segments.h"
#include "metadata/psd_resources.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kResourcesMark("Photoshop 3.0\0", 14);

void Add(ExifData& data, IptcBlock block) {
  data.iptc.insert(data.iptc.end(), std::make_move_iterator(block.items.begin()),
                   std::make_move_iterator(block.items.end()));
  data.iptcSurroundings.otherRecords += block.surroundings.otherRecords;
  data.iptcSurroundings.tail += block.surroundings.tail;
}

/// The data of the resource. A segment without the usual mark may also hold the datasets themselves.
FileRange FindIptc(const JpegSegments& segments, const JpegSegment& segment, const ByteSource& file) {
  const bool isMarked = segments.PayloadStartsWith(segment, kResourcesMark);
  const auto skipped = isMarked ? kResourcesMark.size() : 0;
  const FileRange area{segment.payload + skipped, segment.payloadSize - skipped};
  const auto resources = ReadPsdResources(file, area, CutResource::Keep);
  if (const auto* iptc = FindPsdResource(resources, psd_resource::kIptc)) return iptc->data;
  return isMarked || !resources.empty() ? FileRange() : area;
}

}  // namespace

void ReadBareIptc(ExifData& data, ByteView block) { Add(data, ParseIptcBlock(block, IptcCarrier::Bare)); }

void ReadIptcResource(ExifData& data, ByteView block) { Add(data, ParseIptcBlock(block, IptcCarrier::Resource)); }

void ReadJpegIptc(ExifData& data, const ByteSource& file) {
  JpegSegments segments(file);
  auto segment = segments.Next();
  while (segment && segment->marker != jpeg_marker::kApp13) segment = segments.Next();
  if (!segment) return;
  const auto range = FindIptc(segments, *segment, file);
  const auto bytes = file.ReadUpTo(range.position, range.size);
  ReadIptcResource(data, ByteView(bytes, ByteOrder::Big));
}

void ReadPngIptc(ExifData& data, std::string_view text) {
  for (auto& item : ParseIptcText(text)) data.iptc.push_back(std::move(item));
}

}  // namespace ml::metadata
