#include "imaging/png/png_texts.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "metadata/edit/png_text_chunk.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_png_text.h"
#include "platform/text.h"

namespace ml::imaging {
namespace {

using metadata::PngTextForm;

class TextList {
 public:
  void Add(std::string_view key, std::string_view text, PngTextForm form = PngTextForm::Text) {
    if (text.empty()) return;
    const auto chunk = metadata::BuildPngText(key, text, form);
    bytes_.insert(bytes_.end(), chunk.begin(), chunk.end());
  }
  std::vector<std::byte> Take() { return std::move(bytes_); }

 private:
  std::vector<std::byte> bytes_;
};

std::string FirstValue(const metadata::IptcBlock& iptc, int dataset) {
  const auto found = std::ranges::find_if(iptc.items, [&](const auto& item) {
    return item.record == metadata::kApplicationRecord && item.dataset == dataset;
  });
  return found == iptc.items.end() ? "" : found->value;
}

}  // namespace

std::vector<std::byte> PngTexts(const MetadataBlocks& blocks) {
  namespace dataset = metadata::iptc_dataset;
  TextList texts;
  if (blocks.shooting) {
    const auto& shooting = *blocks.shooting;
    texts.Add("Description", shooting.comment);
    texts.Add("Software", shooting.firmware);
    texts.Add("Source", shooting.model);
    constexpr std::size_t kDateSize = 10;
    const auto date = platform::ReplaceAll(std::string_view(shooting.dateTime).substr(0, kDateSize), ":", "-");
    texts.Add("Creation Time", date + shooting.dateTime.substr(std::min(kDateSize, shooting.dateTime.size())));
  }
  texts.Add("Exif", blocks.summary);
  texts.Add("IPTC", metadata::BuildIptcText(blocks.iptc.items), PngTextForm::Bytes);
  texts.Add("Author", FirstValue(blocks.iptc, dataset::kByLine));
  texts.Add("Comment", FirstValue(blocks.iptc, dataset::kSpecialInstructions));
  texts.Add("Copyright", FirstValue(blocks.iptc, dataset::kCopyright));
  texts.Add(metadata::kRawIptcKey, metadata::BuildRawIptcText(blocks.iptc), PngTextForm::Bytes);
  return texts.Take();
}

}  // namespace ml::imaging
