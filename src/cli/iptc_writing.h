#pragma once

#include <string>
#include <vector>

#include "imagefiles/edits/iptc_edits.h"

namespace CLI {
class App;
}

namespace ml::cli {

struct RunState;

/// What `iptc` is to change in images.
struct IptcChange {
  std::vector<std::string> set;  ///< "DATASET=VALUE"
  bool clear = false;
  std::string merge;  ///< a file of IPTC data
  bool mergeKeywords = false, onlyReplaceEmpty = false, leaveExisting = false, exifTimestamp = false;

  bool HasRules() const { return mergeKeywords || onlyReplaceEmpty || leaveExisting || exifTimestamp; }
  bool Asked() const { return clear || !set.empty() || !merge.empty() || HasRules(); }
};

void AddIptcChangeOptions(CLI::App& command, IptcChange& change);

/// Changes the images, whose paths are absolute, and gives a result for each; one that was not reached has a failure.
/// Tells of failures. Throws WrongUsage for options that do not go together or cannot be.
std::vector<imagefiles::IptcResult> ChangeIptc(const std::vector<std::string>& paths, const IptcChange& change,
                                               imagefiles::WriteMode mode, RunState& state);

}  // namespace ml::cli
