#include "metadata/iptc/iptc_readers.h"

#include <iterator>
#include <utility>

#include "metadata/iptc/iptc_block.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/iptc/iptc_png_text.h"
#include "metadata/jpeg_iptc_place.h"

namespace ml::metadata {
namespace {

void Add(ExifData& data, IptcBlock block) {
  data.iptc.insert(data.iptc.end(), std::make_move_iterator(block.items.begin()),
                   std::make_move_iterator(block.items.end()));
  data.iptcSurroundings.otherRecords += block.surroundings.otherRecords;
  data.iptcSurroundings.tail += block.surroundings.tail;
}

}  // namespace

void ReadBareIptc(ExifData& data, ByteView block) { Add(data, ParseIptcBlock(block, IptcCarrier::Bare)); }

void ReadIptcResource(ExifData& data, ByteView block) { Add(data, ParseIptcBlock(block, IptcCarrier::Resource)); }

void ReadJpegIptc(ExifData& data, const ByteSource& file) {
  const auto place = FindJpegIptc(file);
  if (!place) return;
  auto bytes = file.ReadUpTo(place->data.position, place->data.size);
  for (const auto& rest : place->rest) {
    if (bytes.size() >= kMostIptcBytes) break;
    const auto more = file.ReadUpTo(rest.data.position, rest.data.size);
    bytes.insert(bytes.end(), more.begin(), more.end());
  }
  ReadIptcResource(data, ByteView(bytes, ByteOrder::Big));
}

void ReadPngIptc(ExifData& data, std::string_view text) {
  for (auto& item : ParseIptcText(text)) data.iptc.push_back(std::move(item));
}

}  // namespace ml::metadata
