#include "catalogue/rename_plan.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_set>

#include "catalogue/messages.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::catalogue {
namespace {

using platform::UserError;

/// In bytes; no file system takes more.
constexpr std::size_t kLongestName = 255;

std::string NewName(std::string_view stem, std::string_view extension, CaseMode caseMode) {
  const auto name = std::string(stem).append(extension);
  switch (caseMode) {
    case CaseMode::LowerExtension:
      return std::string(stem) + platform::AsciiLower(extension);
    case CaseMode::Lower:
      return platform::AsciiLower(name);
    case CaseMode::Upper:
      return platform::AsciiUpper(name);
    case CaseMode::Unchanged:
      break;
  }
  return name;
}

/// A path without its extension, for questions of equality.
std::string FoldedStem(const std::string& path) {
  const auto parts = platform::SplitPath(path);
  return platform::nameFold(std::string(parts.directory).append(parts.stem));
}

/// Files that go together, the image first, with their names at some time.
using Group = std::vector<std::string>;

/// `files` with another stem each.
Group Restemmed(const Group& files, std::string_view stem, CaseMode caseMode) {
  Group renamed;
  for (const auto& path : files) {
    const auto parts = platform::SplitPath(path);
    renamed.push_back(std::string(parts.directory) + NewName(stem, parts.extension, caseMode));
  }
  return renamed;
}

class RenamePlanner {
 public:
  RenamePlanner(const std::vector<std::string>& sources, const std::vector<std::string>& destinations,
                platform::FileSystem& fileSystem)
      : sources_(sources), destinations_(destinations), steps_(fileSystem) {
    for (const auto& path : destinations) wanted_.insert(FoldedStem(path));
  }

  RenamePlan Plan(CaseMode caseMode, imagefiles::CompanionFinder& companions) {
    FindGroups(companions);
    for (std::size_t i = 0; i < groups_.size(); ++i) {
      if (IsInTheWay(i)) MoveAside(groups_[i]);
    }
    RenamePlan plan;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
      const auto arrived = Restemmed(groups_[i], platform::SplitPath(destinations_[i]).stem, caseMode);
      Add(groups_[i], arrived);
      plan.newPaths.push_back(arrived.front());
    }
    plan.steps = steps_.Steps();
    return plan;
  }

 private:
  /// A file goes with the first image that it belongs to, unless it is to be renamed itself.
  void FindGroups(imagefiles::CompanionFinder& companions) {
    std::unordered_set<std::string> taken(sources_.begin(), sources_.end());
    for (std::size_t i = 0; i < sources_.size(); ++i) {
      const auto& source = sources_[i];
      const auto found = companions.Find(source);
      if (found.file.empty()) throw UserError(ErrorRenaming(source, destinations_[i]));
      Group group{source};
      for (const auto& path : found.Paths()) {
        if (taken.insert(path).second) group.push_back(path);
      }
      groups_.push_back(std::move(group));
    }
  }

  /// The stem decides, because companions have no other name than it.
  bool IsInTheWay(std::size_t index) const {
    const auto stem = FoldedStem(sources_[index]);
    return stem != FoldedStem(destinations_[index]) && wanted_.contains(stem);
  }

  /// To a name that is free and that no image is to get.
  void MoveAside(Group& group) {
    const auto& source = group.front();
    auto stem = std::string(platform::SplitPath(source).stem);
    Group aside;
    do {
      stem += "@";
      aside = Restemmed(group, stem, CaseMode::Unchanged);
      if (stem.size() > kLongestName) throw UserError(ErrorRenaming(source, aside.front()));
    } while (wanted_.contains(FoldedStem(aside.front())) ||
             !std::ranges::all_of(aside, [&](const auto& path) { return steps_.IsFree(path); }));
    Add(group, aside);
    group = std::move(aside);
  }

  void Add(const Group& from, const Group& to) {
    for (std::size_t i = 0; i < from.size(); ++i) steps_.Add({from[i], to[i]});
  }

  const std::vector<std::string>& sources_;
  const std::vector<std::string>& destinations_;
  std::unordered_set<std::string> wanted_;  ///< folded stems of the destinations
  std::vector<Group> groups_;
  StepPlanner steps_;
};

}  // namespace

RenamePlan PlanRename(const std::vector<std::string>& sources, const std::vector<std::string>& destinations,
                      CaseMode caseMode, imagefiles::CompanionFinder& companions, platform::FileSystem& fileSystem) {
  if (sources.size() != destinations.size()) throw UserError(ListsDifferInSize());
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const auto directory = platform::normaliseDirectory(platform::DirectoryOf(sources[i]));
    if (directory != platform::normaliseDirectory(platform::DirectoryOf(destinations[i]))) {
      throw UserError(DirectoriesDiffer(sources[i], destinations[i]));
    }
  }
  return RenamePlanner(sources, destinations, fileSystem).Plan(caseMode, companions);
}

}  // namespace ml::catalogue
