#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/iptc_item.h"

/// IPTC data as they are edited, and the way back to a list.
namespace ml::metadata {

/// The values of each known dataset, in their order. A dataset without values is not there; none is empty.
using IptcSheetValues = std::map<int, std::vector<std::string>>;

/// What of `items` can be edited: values below the edit limit.
IptcSheetValues SheetValuesOf(const std::vector<IptcItem>& items);

/// Whether the dataset, which is no list, has a value that is too long to be edited: it stays as it is.
bool IsIptcLocked(const std::vector<IptcItem>& items, int dataset);

/// What an image with `existing` gets when `values` are applied to it: its items that nobody edits, in their order,
/// then the known datasets by their numbers. A dataset whose values are the same keeps its items, byte for byte; so
/// does a locked one. In a list that changed the long values come first.
std::vector<IptcItem> ItemsOf(const IptcSheetValues& values, const std::vector<IptcItem>& existing);

/// What a sheet shows after its values were merged into many images, when the one on show, which had `before`, has
/// `now`: what the user entered stays where the image did not take it. A text with tokens counts as taken.
IptcSheetValues StillEntered(const IptcSheetValues& entered, const IptcSheetValues& before, const IptcSheetValues& now);

/// The words of a text that separates them by commas, semicolons or line ends, without blanks around them.
std::vector<std::string> SplitIptcList(std::string_view text);

struct IptcFault {
  int dataset = 0;
  std::string_view sentence;
};
/// What is wrong with the value of this dataset, if anything.
std::optional<std::string_view> CheckIptcValue(int dataset, std::string_view value);
/// Whether a text with tokens may be entered for this dataset.
bool TakesTokens(int dataset);
/// The first value, in the order of the pages, that is refused. What an image came with is let be: only datasets whose
/// values are not those in `original` count.
std::optional<IptcFault> FirstIptcFault(const IptcSheetValues& values, const IptcSheetValues& original);

}  // namespace ml::metadata
