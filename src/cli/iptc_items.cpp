#include "cli/iptc_items.h"

#include <nlohmann/json.hpp>
#include <string>

#include "metadata/iptc/iptc_datasets.h"
#include "platform/text.h"

namespace ml::cli {

Json JsonOfIptc(const std::vector<metadata::IptcItem>& items) {
  auto array = Json::array();
  for (const auto& item : items) {
    array.push_back({{"record", item.record}, {"dataset", item.dataset}, {"value", JsonText(item.value)}});
  }
  return array;
}

void PrintIptc(const std::vector<metadata::IptcItem>& items, std::string_view indent) {
  for (const auto& item : items) {
    auto line = std::string(indent) + std::to_string(item.record) + ":" + std::to_string(item.dataset);
    const auto* row = item.record == metadata::kApplicationRecord ? metadata::FindIptcDataset(item.dataset) : nullptr;
    if (row != nullptr) line.append(" ").append(row->name);
    PrintLine(line + ": " + platform::ToDisplayLine(item.value));
  }
}

}  // namespace ml::cli
