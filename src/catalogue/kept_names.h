#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ml::catalogue {

/// `now`, with those names of `before` that `stays` holds for put back at their places among the names that
/// are in both. What is new in `now` goes to the end.
std::vector<std::string> MergeKeptNames(const std::vector<std::string>& before, const std::vector<std::string>& now,
                                        const std::function<bool(const std::string& name)>& stays);

}  // namespace ml::catalogue
