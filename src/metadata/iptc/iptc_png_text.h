#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "metadata/iptc/iptc_block.h"
#include "metadata/iptc_item.h"

/// IPTC data as the text "IPTC" of a PNG file: a line for each dataset with its record, number, length and value.
namespace ml::metadata {

/// The items of the application record in front of the first line that is no such line or promises more than there is.
std::vector<IptcItem> ParseIptcText(std::string_view text);
/// The items of the application record whose values are below the edit limit; empty if there are none.
std::string BuildIptcText(const std::vector<IptcItem>& items);

/// The key of the text under which other programs keep all of a block, and the text: its image resource as hexadecimal
/// digits. Empty for an empty block.
inline constexpr std::string_view kRawIptcKey = "Raw profile type iptc";
std::string BuildRawIptcText(const IptcBlock& block);

}  // namespace ml::metadata
