#pragma once

#include <vector>

#include "cli/output.h"
#include "metadata/iptc_item.h"

namespace ml::cli {

/// An array of `{record, dataset, value}`.
Json JsonOfIptc(const std::vector<metadata::IptcItem>& items);
/// A line each, such as "2:120 caption: .."; `indent` stands in front.
void PrintIptc(const std::vector<metadata::IptcItem>& items, std::string_view indent);

}  // namespace ml::cli
