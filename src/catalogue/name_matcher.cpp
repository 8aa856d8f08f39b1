#include "catalogue/name_matcher.h"

#include <algorithm>

#include "platform/paths.h"

namespace ml::catalogue {

namespace {

/// The entries of a list of (name, index), sorted, whose name is `name`.
template <class List, class Name>
auto Range(const List& list, const Name& name) {
  return std::ranges::equal_range(list, name, {}, [](const auto& entry) -> const auto& { return entry.first; });
}

template <class Range>
std::vector<int> Indices(const Range& range) {
  std::vector<int> result;
  for (const auto& entry : range) result.push_back(entry.second);
  return result;
}

}  // namespace

NameMatcher::NameMatcher(std::vector<std::string_view> names) : names_(std::move(names)), taken_(names_.size(), false) {
  exact_.reserve(names_.size());
  for (const auto& name : names_) exact_.emplace_back(name, static_cast<int>(exact_.size()));
  std::ranges::sort(exact_);
}

const std::vector<NameMatcher::FoldedName>& NameMatcher::Folded() {
  if (folded_.empty()) {
    folded_.reserve(names_.size());
    for (const auto& name : names_) folded_.emplace_back(platform::nameFold(name), static_cast<int>(folded_.size()));
    std::ranges::sort(folded_);
  }
  return folded_;
}

int NameMatcher::Take(std::string_view name) {
  const auto takeFirst = [this](const auto& range) {
    for (const auto& entry : range) {
      const auto index = static_cast<std::size_t>(entry.second);
      if (taken_[index]) continue;
      taken_[index] = true;
      return entry.second;
    }
    return -1;
  };
  const int exact = takeFirst(Range(exact_, name));
  return exact >= 0 ? exact : takeFirst(Range(Folded(), platform::nameFold(name)));
}

std::vector<int> NameMatcher::FindAll(std::string_view name) {
  auto exact = Indices(Range(exact_, name));
  return exact.empty() ? FindFolded(name) : exact;
}

std::vector<int> NameMatcher::FindFolded(std::string_view name) {
  return Indices(Range(Folded(), platform::nameFold(name)));
}

std::vector<int> MatchedOrder(std::vector<std::string_view> entries, const std::vector<std::string>& wanted) {
  const auto count = entries.size();
  NameMatcher matcher(std::move(entries));
  std::vector<int> order;
  std::vector<bool> placed(count, false);
  order.reserve(count);
  for (const auto& name : wanted) {
    const int index = matcher.Take(name);
    if (index < 0) continue;
    order.push_back(index);
    placed[static_cast<std::size_t>(index)] = true;
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (!placed[i]) order.push_back(static_cast<int>(i));
  }
  return order;
}

}  // namespace ml::catalogue
