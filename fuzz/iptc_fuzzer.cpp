#include <cstdlib>

#include "metadata/exif_formats.h"
#include "metadata/iptc/iptc_block.h"
#include "metadata/iptc/iptc_compare.h"
#include "metadata/iptc/iptc_merge.h"
#include "metadata/iptc/iptc_png_text.h"

#include "fuzz_source.h"

namespace {

using namespace ml::metadata;

/// What was read can be written and then reads the same.
void RoundTrip(ByteView bytes, IptcCarrier carrier) {
  const auto block = ParseIptcBlock(bytes, carrier);
  const auto built = BuildIptcBlock(block, carrier);
  const auto again = ParseIptcBlock(ByteView(built, ByteOrder::Big), carrier);
  if (!IsSameIptc(block.items, again.items)) std::abort();
  if (block.surroundings.otherRecords != again.surroundings.otherRecords) std::abort();
  const auto text = BuildIptcText(block.items);
  if (BuildIptcText(ParseIptcText(text)) != text) std::abort();
  const IptcMergeRules replace{.mergeKeywords = false, .onlyReplaceEmpty = false, .leaveExistingIfNewEmpty = false};
  MergeIptc(block.items, ParseIptcText(bytes.Text(0, bytes.Size())), replace);
  MergeIptc(block.items, block.items, {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ByteView bytes(std::as_bytes(std::span(data, size)), ByteOrder::Big);
  for (const auto carrier : {IptcCarrier::Bare, IptcCarrier::Resource}) RoundTrip(bytes, carrier);
  const auto source = FuzzSource(data, size);
  for (const auto* name : {"a.jpg", "a.png", "a.psd", "a.jp2"}) {
    try {
      ExifData record;
      FindExifFormat(name)->read(record, source);
    } catch (ExifException) {
      continue;  // how these readers mark a broken file
    }
  }
  return 0;
}
