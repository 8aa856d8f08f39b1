#include "batch/apply_rename.h"

#include <unistd.h>

#include <algorithm>
#include <unordered_map>

#include "batch/messages.h"
#include "catalogue/rename_plan.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

using platform::UserError;

/// In characters: a rule of the cameras' own programs.
constexpr std::size_t kLongestRawName = 31;
/// In bytes; no file system takes more.
constexpr std::size_t kLongestName = 255;

/// For each name, how many rows have it, and how many came by so far.
class NameCounts {
 public:
  NameCounts(const std::vector<NewName>& rows, std::string (*form)(std::string_view name)) : form_(form) {
    for (const auto& row : rows) ++left_[form_(row.newName)];
  }
  /// Whether a row behind this one has the name too. To be asked once for each row, in order.
  bool ComesAgain(const NewName& row) { return --left_[form_(row.newName)] > 0; }

 private:
  std::string (*form_)(std::string_view name);
  std::unordered_map<std::string, int> left_;
};

/// The rules that everybody knows, name by name.
void CheckNames(const std::vector<NewName>& rows) {
  NameCounts names(rows, [](std::string_view name) { return std::string(name); });
  for (const auto& row : rows) {
    const auto& name = row.newName;
    if (name.find_first_of("\\/:*?\"<>|") != std::string::npos) throw UserError(forbiddenCharacter(name));
    if (row.isCanonRaw && platform::CodePointCount(name) > kLongestRawName) {
      throw UserError(rawNameTooLong(row.oldName, name));
    }
    if (names.ComesAgain(row)) throw UserError(duplicateName(name));
  }
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

/// What no file system takes, or what would hide or mix up files on some.
void CheckFileNames(const std::vector<NewName>& rows) {
  NameCounts folded(rows, platform::nameFold);
  for (const auto& row : rows) {
    const auto stem = platform::SplitPath(row.newName).stem;
    if (stem.empty() || stem == "." || stem == ".." || std::ranges::any_of(row.newName, IsControl)) {
      throw UserError(notAName(row.oldName));
    }
    if (row.newName.size() > kLongestName) throw UserError(nameTooLong(row.oldName));
    if (folded.ComesAgain(row)) throw UserError(sameButForCase(row.newName));
  }
}

}  // namespace

RenamePaths PathsOf(const std::string& directory, const NewNames& names) {
  RenamePaths paths;
  paths.sources.resize(names.rows.size());
  paths.destinations.resize(names.rows.size());
  for (const auto& row : names.rows) {
    paths.sources[row.given] = directory + row.oldName;
    paths.destinations[row.given] = directory + row.newName;
  }
  return paths;
}

platform::MessageBox ConflictMessage(const NewNames& names) {
  std::string text = kConflictHeading;
  for (const auto& row : names.rows) {
    if (row.conflict) text += row.newName + "\n";
  }
  return {std::string(platform::TrimRight(text)), "Marrowlantern", platform::BoxIcon::Error};
}

void CheckNewNames(const std::string& directory, const NewNames& names, catalogue::CaseMode caseMode,
                   imagefiles::CompanionFinder& companions) {
  if (names.HasConflict()) throw UserError(kNamesConflict);
  CheckNames(names.rows);
  CheckFileNames(names.rows);
  if (::access(directory.empty() ? "." : directory.c_str(), W_OK) != 0) throw UserError(notWritable(directory));
  const auto paths = PathsOf(directory, names);
  const auto plan = catalogue::PlanRename(paths.sources, paths.destinations, caseMode, companions);
  const auto displaced = std::ranges::find_if(
      plan.steps, [](const auto& step) { return step.kind == catalogue::RenameStep::Kind::Displace; });
  if (displaced != plan.steps.end()) throw UserError(fileInTheWay(displaced->change.to));
}

std::vector<std::string> FollowRename(std::vector<std::string> paths, const RenamePaths& renamed) {
  std::unordered_map<std::string, std::size_t> exact, folded;
  for (std::size_t i = 0; i < renamed.sources.size(); ++i) {
    exact.emplace(renamed.sources[i], i);
    folded.emplace(platform::nameFold(renamed.sources[i]), i);
  }
  for (auto& path : paths) {
    auto found = exact.find(path);
    if (found == exact.end()) {
      found = folded.find(platform::nameFold(path));
      if (found == folded.end()) continue;
    }
    path = renamed.destinations[found->second];
  }
  return paths;
}

}  // namespace ml::batch
