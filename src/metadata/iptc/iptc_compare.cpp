#include "metadata/iptc/iptc_compare.h"

#include <map>
#include <string_view>
#include <utility>

namespace ml::metadata {
namespace {

using ValuesByDataset = std::map<std::pair<int, int>, std::vector<std::string_view>>;

ValuesByDataset Grouped(const std::vector<IptcItem>& items) {
  ValuesByDataset values;
  for (const auto& item : items) values[{item.record, item.dataset}].push_back(item.value);
  return values;
}

}  // namespace

bool IsSameIptc(const std::vector<IptcItem>& a, const std::vector<IptcItem>& b) { return Grouped(a) == Grouped(b); }

}  // namespace ml::metadata
