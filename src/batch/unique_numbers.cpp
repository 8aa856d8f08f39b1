#include "batch/unique_numbers.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

std::string StemOf(const std::string& name) { return platform::nameFold(platform::SplitPath(name).stem); }

/// A token that stands for a number; what it reads as, and where it begins.
struct NumberToken {
  std::string_view token;
  std::int64_t first;
  std::function<std::string(std::int64_t number)> text;
};

/// How many names have each stem.
class Stems {
 public:
  void Add(const std::string& name) { ++counts_[StemOf(name)]; }
  void Remove(const std::string& name) { --counts_[StemOf(name)]; }
  bool Has(const std::string& name) const {
    const auto found = counts_.find(StemOf(name));
    return found != counts_.end() && found->second > 0;
  }

 private:
  std::unordered_map<std::string, int> counts_;
};

void Fill(std::vector<NewName>& rows, Stems taken, const NumberToken& number) {
  for (const auto& row : rows) taken.Add(row.newName);
  // Numbers only ever become taken, so that names of one form need not begin at the first one each.
  std::unordered_map<std::string, std::int64_t> next;
  for (auto& row : rows) {
    const auto [directory, stem, extension] = platform::SplitPath(row.newName);
    if (stem.find(number.token) == std::string::npos) continue;
    auto& n = next.try_emplace(std::string(stem), number.first).first->second;
    const auto trial = [&] {
      return std::string(directory) + platform::ReplaceAll(stem, number.token, number.text(n)).append(extension);
    };
    auto name = trial();
    for (; taken.Has(name); name = trial()) ++n;
    taken.Remove(row.newName);
    row.newName = std::move(name);
    taken.Add(row.newName);
  }
}

bool BlocksSuffixes(const std::string& name) {
  return !platform::EndsWithNoCase(name, ".txt") && !platform::EndsWithNoCase(name, ".thm");
}

}  // namespace

void FillUniqueNumbers(std::vector<NewName>& rows, const std::vector<std::string>& otherFiles, std::size_t digits) {
  const auto uses = [&](std::string_view token) {
    return std::ranges::any_of(rows, [&](const auto& row) { return row.newName.find(token) != std::string::npos; });
  };
  const NumberToken number{"%u", 1, [&](std::int64_t n) { return platform::PaddedNumber(n, digits); }};
  const NumberToken suffix{"%U", 0, [](std::int64_t n) { return n == 0 ? std::string() : "_" + std::to_string(n); }};
  if (uses(number.token)) {
    Stems taken;
    for (const auto& name : otherFiles) taken.Add(name);
    Fill(rows, std::move(taken), number);
  }
  if (uses(suffix.token)) {
    Stems taken;
    for (const auto& name : otherFiles) {
      if (BlocksSuffixes(name)) taken.Add(name);
    }
    Fill(rows, std::move(taken), suffix);
  }
}

}  // namespace ml::batch
