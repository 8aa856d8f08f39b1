#pragma once

#include <string_view>
#include <vector>

#include "metadata/iptc_item.h"

namespace ml::metadata {

/// Makes `text` the caption of the application record, in the place of the old one; an empty text takes it away. A text
/// at or above the edit limit is cut to what can still be edited.
void SetIptcCaption(std::vector<IptcItem>& items, std::string_view text);

}  // namespace ml::metadata
