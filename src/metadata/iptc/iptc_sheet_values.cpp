#include "metadata/iptc/iptc_sheet_values.h"

#include <algorithm>
#include <iterator>

#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_fields.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/iptc/iptc_validation.h"
#include "metadata/messages.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kSeparators = ",;\r\n";

bool IsOfField(const IptcItem& item) {
  return item.record == kApplicationRecord && FindIptcDataset(item.dataset) != nullptr;
}
bool IsOf(const IptcItem& item, int dataset) { return item.record == kApplicationRecord && item.dataset == dataset; }
bool IsLong(const IptcItem& item) { return item.value.size() >= kIptcEditLimit; }

const std::vector<std::string>& ValuesOf(const IptcSheetValues& values, int dataset) {
  static const std::vector<std::string> none;
  const auto found = values.find(dataset);
  return found == values.end() ? none : found->second;
}

}  // namespace

IptcSheetValues SheetValuesOf(const std::vector<IptcItem>& items) {
  IptcSheetValues values;
  for (const auto& item : items) {
    if (IsOfField(item) && !IsLong(item) && !item.value.empty()) values[item.dataset].push_back(item.value);
  }
  return values;
}

bool IsIptcLocked(const std::vector<IptcItem>& items, int dataset) {
  const auto* row = FindIptcDataset(dataset);
  return row != nullptr && !row->repeated &&
         std::ranges::any_of(items, [&](const auto& item) { return IsOf(item, dataset) && IsLong(item); });
}

std::vector<IptcItem> ItemsOf(const IptcSheetValues& values, const std::vector<IptcItem>& existing) {
  const auto before = SheetValuesOf(existing);
  std::vector<IptcItem> items;
  const auto keep = [&](auto&& which) { std::ranges::copy_if(existing, std::back_inserter(items), which); };
  keep([](const IptcItem& item) { return !IsOfField(item); });
  for (const auto& row : KnownIptcDatasets()) {
    const auto& now = ValuesOf(values, row.dataset);
    const bool stays = now == ValuesOf(before, row.dataset) || IsIptcLocked(existing, row.dataset);
    keep([&](const IptcItem& item) { return IsOf(item, row.dataset) && (stays || IsLong(item)); });
    if (stays) continue;
    for (const auto& value : now) {
      if (!value.empty()) items.push_back({kApplicationRecord, row.dataset, value});
    }
  }
  return items;
}

IptcSheetValues StillEntered(const IptcSheetValues& entered, const IptcSheetValues& before,
                             const IptcSheetValues& now) {
  auto values = now;
  for (const auto& row : KnownIptcDatasets()) {
    const auto& mine = ValuesOf(entered, row.dataset);
    const bool hasToken = std::ranges::any_of(mine, [](const auto& text) { return text.find('@') != text.npos; });
    if (mine == ValuesOf(before, row.dataset) || hasToken) continue;
    values.erase(row.dataset);
    if (!mine.empty()) values[row.dataset] = mine;
  }
  return values;
}

std::vector<std::string> SplitIptcList(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const auto end = std::min(text.find_first_of(kSeparators), text.size());
    const auto word = platform::Trim(text.substr(0, end));
    if (!word.empty()) words.emplace_back(word);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

std::optional<std::string_view> CheckIptcValue(int dataset, std::string_view value) {
  if (value.size() >= kIptcEditLimit) return messages::kIptcTextTooLong;
  if (dataset == iptc_dataset::kCategory) return CheckIptcCategory(value);
  if (dataset == iptc_dataset::kDateCreated) return CheckIptcDate(CleanIptcDate(value), IptcDateKind::Created);
  if (dataset == iptc_dataset::kReleaseDate) return CheckIptcDate(CleanIptcDate(value), IptcDateKind::Release);
  return std::nullopt;
}

bool TakesTokens(int dataset) { return !CheckIptcValue(dataset, "@"); }

std::optional<IptcFault> FirstIptcFault(const IptcSheetValues& values, const IptcSheetValues& original) {
  for (const auto& field : IptcFields()) {
    const auto& now = ValuesOf(values, field.dataset);
    if (now == ValuesOf(original, field.dataset)) continue;
    for (const auto& value : now) {
      if (const auto sentence = CheckIptcValue(field.dataset, value)) return IptcFault{field.dataset, *sentence};
    }
  }
  return std::nullopt;
}

}  // namespace ml::metadata
