#include "catalogue/rename_files.h"

#include <algorithm>
#include <cstddef>

#include "catalogue/messages.h"
#include "catalogue/rename_steps.h"
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

/// The new names of an image and its companions, the image first. Nothing if it is gone.
std::vector<NameChange> ChangesFor(const std::string& source, std::string_view newStem, CaseMode caseMode,
                                   const RenameTools& tools) {
  const auto companions = tools.companions.Find(source);
  if (companions.file.empty()) return {};
  std::vector<NameChange> changes;
  for (const auto& path : companions.Paths()) {
    const auto parts = platform::SplitPath(path);
    changes.push_back({path, std::string(parts.directory) + NewName(newStem, parts.extension, caseMode)});
  }
  return changes;
}

bool AreAllFree(const std::vector<NameChange>& changes, platform::FileSystem& fileSystem) {
  return std::ranges::all_of(changes, [&](const auto& change) { return IsNameFree(change.to, fileSystem); });
}

/// A path without its extension, for questions of equality.
std::string FoldedStem(const std::string& path) {
  const auto parts = platform::SplitPath(path);
  return platform::nameFold(std::string(parts.directory).append(parts.stem));
}

/// Images that stand in the way of others and bear another name meanwhile.
class MovedAside {
 public:
  explicit MovedAside(const RenameTools& tools) : tools_(tools) {}

  /// Gives the temporary path.
  std::string Move(const std::string& source) {
    auto stem = std::string(platform::SplitPath(source).stem);
    std::vector<NameChange> changes;
    do {
      stem += "@";
      changes = ChangesFor(source, stem, CaseMode::Unchanged, tools_);
      if (changes.empty() || stem.size() > kLongestName) {
        throw UserError(errorRenaming(source, std::string(platform::DirectoryOf(source)) + stem));
      }
    } while (!AreAllFree(changes, tools_.fileSystem));
    RenameSteps(tools_).Run(changes);
    auto moved = std::ranges::find(moved_, source, &NameChange::to);
    if (moved == moved_.end()) moved = moved_.insert(moved, {source, {}});
    return moved->to = changes.front().to;
  }
  /// The image has arrived.
  void Forget(const std::string& path) {
    std::erase_if(moved_, [&](const auto& change) { return change.to == path; });
  }
  /// Gives those still waiting their names back, where these are free.
  void Return() {
    for (auto change = moved_.rbegin(); change != moved_.rend(); ++change) {
      try {
        const auto stem = platform::SplitPath(change->from).stem;
        const auto back = ChangesFor(change->to, stem, CaseMode::Unchanged, tools_);
        if (AreAllFree(back, tools_.fileSystem)) RenameSteps(tools_).Run(back);
      } catch (const UserError&) {
        continue;  // it keeps the name it has; the failure that led here is the one to be told
      }
    }
  }

 private:
  const RenameTools& tools_;
  std::vector<NameChange> moved_;  ///< the images alone
};

/// Which images are in the way of others. The stem decides, because companions have no other name than it.
class Conflicts {
 public:
  explicit Conflicts(const std::vector<std::string>& destinations) {
    for (const auto& path : destinations) stems_.push_back(FoldedStem(path));
  }
  bool IsInTheWay(const std::string& source, std::size_t index) const {
    const auto stem = FoldedStem(source);
    if (stems_[index] == stem) return false;  // it stays where it is
    return std::ranges::find(stems_, stem) != stems_.end();
  }

 private:
  std::vector<std::string> stems_;
};

/// Until no image is in the way of another one.
void ClearTheWay(std::vector<std::string>& sources, const Conflicts& conflicts, MovedAside& aside) {
  for (bool moved = true; moved;) {
    moved = false;
    for (std::size_t i = 0; i < sources.size(); ++i) {
      if (!conflicts.IsInTheWay(sources[i], i)) continue;
      sources[i] = aside.Move(sources[i]);
      moved = true;
    }
  }
}

}  // namespace

std::string RenameOne(const std::string& source, const std::string& destination, CaseMode caseMode,
                      const RenameTools& tools) {
  const auto directory = platform::DirectoryOf(source);
  const auto newDirectory = platform::DirectoryOf(destination);
  if (platform::normaliseDirectory(directory) != platform::normaliseDirectory(newDirectory)) {
    throw UserError(directoriesDiffer(source, destination));
  }
  const auto changes = ChangesFor(source, platform::SplitPath(destination).stem, caseMode, tools);
  if (changes.empty()) throw UserError(errorRenaming(source, destination));
  RenameSteps(tools).Run(changes);
  return changes.front().to;
}

void RenameFiles(std::vector<std::string> sources, const std::vector<std::string>& destinations, CaseMode caseMode,
                 const RenameTools& tools) {
  if (sources.size() != destinations.size()) throw UserError(listsDifferInSize());
  MovedAside aside(tools);
  try {
    ClearTheWay(sources, Conflicts(destinations), aside);
    for (std::size_t i = 0; i < sources.size(); ++i) {
      RenameOne(sources[i], destinations[i], caseMode, tools);
      aside.Forget(sources[i]);
    }
  } catch (const UserError&) {
    aside.Return();
    throw;
  }
}

}  // namespace ml::catalogue
