#include "catalogue/kept_names.h"

#include <string_view>
#include <unordered_set>

namespace ml::catalogue {

std::vector<std::string> MergeKeptNames(const std::vector<std::string>& before, const std::vector<std::string>& now,
                                        const std::function<bool(const std::string& name)>& stays) {
  const std::unordered_set<std::string_view> inNow(now.begin(), now.end());
  std::vector<std::string> merged;
  auto next = now.begin();
  for (const auto& name : before) {
    if (inNow.contains(name)) {
      if (next != now.end()) merged.push_back(*next++);
    } else if (stays(name)) {
      merged.push_back(name);
    }
  }
  merged.insert(merged.end(), next, now.end());
  return merged;
}

}  // namespace ml::catalogue
