#include "metadata/iptc/iptc_file.h"

#include <span>

#include "metadata/iptc/iptc_dataset_codec.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/messages.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::uint64_t kLargestFile = 16ULL << 20;  ///< bytes

}  // namespace

bool IsIptcFile(std::string_view path) {
  return platform::EndsWithNoCase(path, ".ipt") || platform::EndsWithNoCase(path, ".ffo");
}

std::vector<IptcItem> ParseIptcFile(const std::string& path, ByteView bytes) {
  std::vector<IptcItem> items;
  for (auto head = NextIptcDataset(bytes, 0); head;) {
    if (head->length > kIptcLongestLoaded) throw platform::UserError(path + messages::kIptcValueTooLong);
    const auto value = IptcValue(bytes, *head);
    if (head->record == kApplicationRecord && head->dataset > iptc_dataset::kVersion) {
      items.push_back({head->record, head->dataset, std::string(value)});
    }
    head = NextIptcDataset(bytes, head->value + value.size());
  }
  return items;
}

std::string BuildIptcFile(const std::vector<IptcItem>& items) {
  std::string text;
  AppendIptcVersion(text);
  for (const auto& item : items) {
    const bool isEdited = item.record == kApplicationRecord && item.dataset > iptc_dataset::kVersion;
    // Kept: values between the two limits are written, and the file is then refused when it is loaded.
    if (isEdited && item.value.size() < kIptcEditLimit) AppendIptcDataset(text, item.record, item.dataset, item.value);
  }
  return text;
}

std::vector<IptcItem> LoadIptcFile(const std::string& path) {
  const auto bytes = platform::ReadFile(path, kLargestFile);
  return ParseIptcFile(path, ByteView(bytes, ByteOrder::Big));
}

void SaveIptcFile(const std::string& path, const std::vector<IptcItem>& items, platform::ExistingFile existing) {
  const auto text = BuildIptcFile(items);
  platform::ReplaceFile(path, platform::AsBytes(text), {.existing = existing});
}

}  // namespace ml::metadata
