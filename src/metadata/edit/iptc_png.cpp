#include "metadata/edit/iptc_png.h"

#include <algorithm>
#include <string>

#include "metadata/edit/image_data.h"
#include "metadata/edit/png_text_chunk.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/iptc/iptc_png_text.h"
#include "metadata/messages.h"
#include "metadata/png_chunks.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

struct TextRow {
  std::string_view key;
  int dataset = 0;
};
constexpr TextRow kTexts[] = {{"Author", iptc_dataset::kByLine},
                              {"Comment", iptc_dataset::kSpecialInstructions},
                              {"Copyright", iptc_dataset::kCopyright},
                              {"Description", iptc_dataset::kCaption}};

std::string ValueOf(const std::vector<IptcItem>& items, int dataset) {
  const auto found = std::ranges::find_if(items, [&](const auto& item) {
    return item.record == kApplicationRecord && item.dataset == dataset && item.value.size() < kIptcEditLimit;
  });
  return found == items.end() ? "" : found->value;
}

}  // namespace

void WritePngIptc(EditedFile& file, const IptcBlock& block, CaptionIsComment caption) {
  PngImageData(file);
  const auto png = ReadPngInfo(file);
  if (!png) throw platform::UserError(messages::kDamagedForEdit);
  const auto* iptc = png->FindText("IPTC");
  const auto before = iptc == nullptr ? std::vector<IptcItem>() : ParseIptcText(*iptc);
  SetPngText(file, "IPTC", BuildIptcText(block.items), PngTextForm::Bytes);
  if (png->FindText(kRawIptcKey) != nullptr) {
    SetPngText(file, kRawIptcKey, BuildRawIptcText(block), PngTextForm::Bytes);
  }
  for (const auto& row : kTexts) {
    if (row.dataset == iptc_dataset::kCaption && caption == CaptionIsComment::No) continue;
    const auto value = ValueOf(block.items, row.dataset);
    const auto* text = png->FindText(row.key);
    const bool isOurs = text != nullptr && *text == ValueOf(before, row.dataset);
    const bool isThere = text != nullptr && *text == value;
    if (isThere || (value.empty() && !isOurs)) continue;
    SetPngText(file, row.key, value, PngTextForm::Text);
  }
}

}  // namespace ml::metadata
