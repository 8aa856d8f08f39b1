#pragma once

#include <vector>

#include "metadata/iptc_item.h"

namespace ml::metadata {

/// Whether both lists hold the same values of each dataset, those of a repeated one in the same order. The order of
/// different datasets does not matter.
bool IsSameIptc(const std::vector<IptcItem>& a, const std::vector<IptcItem>& b);

}  // namespace ml::metadata
