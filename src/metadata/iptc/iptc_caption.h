#pragma once

#include <string_view>
#include <vector>

#include "metadata/exif_data.h"
#include "metadata/iptc/iptc_block.h"
#include "metadata/iptc_item.h"

namespace ml::metadata {

/// Makes `text` the caption of the application record, in the place of the old one; an empty text takes it away. A text
/// at or above the edit limit is cut to what can still be edited.
void SetIptcCaption(std::vector<IptcItem>& items, std::string_view text);

/// What was read of a file, with `text` as its caption.
IptcBlock WithCaption(const ExifData& read, std::string_view text);

}  // namespace ml::metadata
