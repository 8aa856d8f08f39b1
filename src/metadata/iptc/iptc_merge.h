#pragma once

#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "metadata/iptc_item.h"

namespace ml::metadata {

/// What becomes of the values that an image has when it gets new ones.
struct IptcMergeRules {
  bool mergeKeywords = true;            ///< "IptcMergeKeywords": lists are joined, else replaced
  bool onlyReplaceEmpty = true;         ///< "IptcOnlyReplaceEmpty": a value that is there stays
  bool leaveExistingIfNewEmpty = true;  ///< "IptcLeaveExistingIfNewEmpty": what has no new value stays
  std::time_t timestamp = 0;            ///< of the shot, for date and time created; 0 leaves these two alone
};

/// The list that an image with `existing` gets: its values that nobody can edit, then date and time of the shot, then
/// keywords and categories, then the other new values, then what is left alone. Of the new values only those of the
/// application record below the edit limit count; an empty one is none. An existing value that is too long to be edited
/// stays unless another one comes in its place.
std::vector<IptcItem> MergeIptc(const std::vector<IptcItem>& existing, const std::vector<IptcItem>& incoming,
                                const IptcMergeRules& rules);

/// Passes each value that holds an "@" through `expand`; to be done for the image in question before anything else.
void ExpandIptcValues(std::vector<IptcItem>& items, const std::function<std::string(const std::string&)>& expand);

}  // namespace ml::metadata
