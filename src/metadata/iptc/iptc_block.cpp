#include "metadata/iptc/iptc_block.h"

#include <span>

#include "metadata/iptc/iptc_dataset_codec.h"
#include "metadata/iptc/iptc_datasets.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

/// Either bit of a length tells of a form that this codec does not read; what it says cannot be a length.
constexpr std::uint16_t kExtendedBits = 0xc000;
constexpr unsigned char kFirstPrintable = 0x20;
constexpr std::size_t kMaxItems = 65'536;

bool IsListed(const IptcDatasetHead& head, std::string_view value, IptcCarrier carrier) {
  if (value.empty()) return false;
  if (head.record != kApplicationRecord) return true;
  if (head.dataset == iptc_dataset::kVersion) return false;
  // Kept: a bare block loses such values and a resource does not.
  return carrier == IptcCarrier::Resource || static_cast<unsigned char>(value.front()) >= kFirstPrintable;
}

bool IsWritten(const IptcItem& item, IptcCarrier carrier) {
  if (item.record != kApplicationRecord || item.dataset == iptc_dataset::kVersion) return false;
  if (item.value.empty() || (item.value.size() & kExtendedBits) != 0 || item.value.size() > 0xffff) return false;
  return carrier == IptcCarrier::Resource || item.value.front() != '\0';
}

}  // namespace

IptcBlock ParseIptcBlock(ByteView bytes, IptcCarrier carrier) {
  IptcBlock block;
  auto head = NextIptcDataset(bytes, 0);
  while (head) {
    if ((head->length & kExtendedBits) != 0 || block.items.size() == kMaxItems) {
      block.surroundings.tail = bytes.Text(head->offset, bytes.Size() - head->offset);
      break;
    }
    const auto value = IptcValue(bytes, *head);
    if (IsListed(*head, value, carrier)) block.items.push_back({head->record, head->dataset, std::string(value)});
    if (head->record != kApplicationRecord) {
      AppendIptcDataset(block.surroundings.otherRecords, head->record, head->dataset, value);
    }
    head = NextIptcDataset(bytes, head->value + value.size());
  }
  return block;
}

std::vector<std::byte> BuildIptcBlock(const IptcBlock& block, IptcCarrier carrier) {
  std::string items;
  for (const auto& item : block.items) {
    if (IsWritten(item, carrier)) AppendIptcDataset(items, item.record, item.dataset, item.value);
  }
  if (items.empty() && block.surroundings == IptcSurroundings()) return {};
  auto text = block.surroundings.otherRecords;
  AppendIptcVersion(text);
  text += items + block.surroundings.tail;
  const std::size_t multiple = carrier == IptcCarrier::Bare ? 4 : 2;
  text.append((multiple - text.size() % multiple) % multiple, '\0');
  const auto bytes = platform::AsBytes(text);
  return {bytes.begin(), bytes.end()};
}

}  // namespace ml::metadata
