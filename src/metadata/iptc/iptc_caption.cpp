#include "metadata/iptc/iptc_caption.h"

#include <algorithm>

#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_limits.h"
#include "platform/text.h"

namespace ml::metadata {

void SetIptcCaption(std::vector<IptcItem>& items, std::string_view text) {
  const auto isCaption = [](const IptcItem& item) {
    return item.record == kApplicationRecord && item.dataset == iptc_dataset::kCaption;
  };
  const auto place = std::ranges::find_if(items, isCaption) - items.begin();
  std::erase_if(items, isCaption);
  if (text.empty()) return;
  items.insert(items.begin() + place, {kApplicationRecord, iptc_dataset::kCaption,
                                       std::string(platform::CutToBytes(text, kIptcEditLimit - 1))});
}

IptcBlock WithCaption(const ExifData& read, std::string_view text) {
  IptcBlock block{.items = read.iptc, .surroundings = read.iptcSurroundings};
  SetIptcCaption(block.items, text);
  return block;
}

}  // namespace ml::metadata
