#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ml::catalogue {

/// Finds names in a list: the exact spelling, and folded text only where that spelling is missing. The names
/// must outlive the matcher.
class NameMatcher {
 public:
  explicit NameMatcher(std::vector<std::string_view> names);

  /// The first name not yet taken that matches, which is then taken; -1 if there is none.
  int Take(std::string_view name);
  /// All that have this spelling; if none has, all that are equal folded.
  std::vector<int> FindAll(std::string_view name);
  /// All that are equal folded.
  std::vector<int> FindFolded(std::string_view name);

 private:
  using FoldedName = std::pair<std::string, int>;
  /// Made when first needed: most look-ups find the exact spelling.
  const std::vector<FoldedName>& Folded();

  std::vector<std::string_view> names_;
  std::vector<std::pair<std::string_view, int>> exact_;  ///< ascending
  std::vector<FoldedName> folded_;                       ///< ascending, empty until needed
  std::vector<bool> taken_;
};

/// The indices of `entries` in the order of `wanted`: each wanted name takes the first entry left that it
/// matches; entries that none matches follow in their old order.
std::vector<int> MatchedOrder(std::vector<std::string_view> entries, const std::vector<std::string>& wanted);

/// `values` in the order that `order` gives by index.
template <class T>
std::vector<T> Permuted(const std::vector<T>& values, const std::vector<int>& order) {
  std::vector<T> result;
  result.reserve(order.size());
  for (const int index : order) result.push_back(values[static_cast<std::size_t>(index)]);
  return result;
}

}  // namespace ml::catalogue
