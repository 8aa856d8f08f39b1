#pragma once

#include <string>
#include <vector>

namespace ml::platform {

/// What both programs do first, before they write anything: finishes what a crash of an earlier run left half
/// done. A sentence for each file that the user should know of; mostly none. Never throws.
std::vector<std::string> FinishEarlierRuns();

}  // namespace ml::platform
