#include "metadata/iptc/iptc_merge.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_dates.h"
#include "metadata/iptc/iptc_limits.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;

bool Holds(const Items& items, int dataset) {
  return std::ranges::find(items, dataset, &IptcItem::dataset) != items.end();
}

/// In the order in which they first appear.
std::vector<int> DatasetsOf(const Items& items) {
  std::vector<int> datasets;
  for (const auto& item : items) {
    if (std::ranges::find(datasets, item.dataset) == datasets.end()) datasets.push_back(item.dataset);
  }
  return datasets;
}

bool IsKnown(int dataset) { return FindIptcDataset(dataset) != nullptr; }

/// What there is to merge: values of the application record.
Items Values(const Items& items) {
  Items values;
  std::ranges::copy_if(items, std::back_inserter(values), [](const auto& item) {
    return item.record == kApplicationRecord && item.dataset != iptc_dataset::kVersion && !item.value.empty();
  });
  return values;
}

class Merge {
 public:
  Merge(const Items& existing, const Items& incoming, const IptcMergeRules& rules)
      : existing_(Values(existing)), incoming_(Values(incoming)), rules_(rules) {
    std::erase_if(incoming_, [](const auto& item) { return item.value.size() >= kIptcEditLimit; });
  }

  Items Run() {
    KeepWhatIsNotEdited();
    if (rules_.timestamp > 0) AddTimestamp();
    for (const int dataset : {iptc_dataset::kKeywords, iptc_dataset::kSupplementalCategories}) AddList(dataset);
    for (const int dataset : DatasetsOf(incoming_)) AddSingle(dataset);
    if (rules_.leaveExistingIfNewEmpty) LeaveExisting();
    return std::move(result_);
  }

 private:
  void Take(const Items& from, int dataset) {
    std::ranges::copy_if(from, std::back_inserter(result_), [&](const auto& item) { return item.dataset == dataset; });
  }

  void KeepWhatIsNotEdited() {
    for (const auto& item : existing_) {
      const bool isLong = item.value.size() >= kIptcEditLimit;
      if (!IsKnown(item.dataset) || (isLong && !IsTakenLater(item.dataset))) result_.push_back(item);
    }
  }

  /// Whether a later step decides about the existing values.
  bool IsTakenLater(int dataset) const {
    const bool isJoined = rules_.mergeKeywords && IsList(dataset);
    return rules_.leaveExistingIfNewEmpty || isJoined || IsStamped(dataset) || Holds(incoming_, dataset);
  }

  bool IsStamped(int dataset) const {
    return rules_.timestamp > 0 && (dataset == iptc_dataset::kDateCreated || dataset == iptc_dataset::kTimeCreated);
  }

  void AddTimestamp() {
    result_.push_back({kApplicationRecord, iptc_dataset::kDateCreated, IptcDate(rules_.timestamp)});
    result_.push_back({kApplicationRecord, iptc_dataset::kTimeCreated, IptcTime(rules_.timestamp)});
  }

  void AddList(int dataset) {
    if (!rules_.mergeKeywords) {
      Take(incoming_, dataset);  // without any, LeaveExisting decides
      return;
    }
    std::set<std::string_view> seen;
    for (const auto* items : {&existing_, &incoming_}) {
      for (const auto& item : *items) {
        if (item.dataset == dataset && seen.insert(item.value).second) result_.push_back(item);
      }
    }
  }

  /// Once for all values of a dataset: existing ones give way together.
  void AddSingle(int dataset) {
    if (Holds(result_, dataset) || IsList(dataset)) return;
    Take(rules_.onlyReplaceEmpty && Holds(existing_, dataset) ? existing_ : incoming_, dataset);
  }

  static bool IsList(int dataset) {
    const auto* row = FindIptcDataset(dataset);
    return row != nullptr && row->repeated;
  }

  void LeaveExisting() {
    for (const int dataset : DatasetsOf(existing_)) {
      if (!Holds(result_, dataset)) Take(existing_, dataset);
    }
  }

  Items existing_, incoming_, result_;
  const IptcMergeRules& rules_;
};

}  // namespace

std::vector<IptcItem> MergeIptc(const std::vector<IptcItem>& existing, const std::vector<IptcItem>& incoming,
                                const IptcMergeRules& rules) {
  return Merge(existing, incoming, rules).Run();
}

void ExpandIptcValues(std::vector<IptcItem>& items, const std::function<std::string(const std::string&)>& expand) {
  for (auto& item : items) {
    if (item.value.find('@') != std::string::npos) item.value = expand(item.value);
  }
}

}  // namespace ml::metadata
