#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "catalogue/rename_files.h"
#include "platform/errors.h"

namespace ml::catalogue {

/// A file, or a link itself, that is to get another name, mostly in its directory. Full paths.
struct NameChange {
  std::string from, to;
};

/// The new name lies on another file system, where no renaming leads.
class OtherFileSystem : public platform::UserError {
 public:
  using UserError::UserError;
};

/// One step of a renaming.
struct RenameStep {
  enum class Kind { Rename, RenameInPlace, Displace };
  Kind kind = Kind::Rename;  ///< RenameInPlace: to another spelling of the same name, where case is ignored
  NameChange change;         ///< Displace: `to` goes to the trash, in favour of `from`
  std::string now;           ///< where the file lies as long as no step is done
};

/// Works out the steps of a renaming without doing any: each sees the names as those before it leave them.
class StepPlanner {
 public:
  explicit StepPlanner(platform::FileSystem& fileSystem) : fileSystem_(fileSystem) {}

  /// What stands at the new name is displaced. Throws UserError if it must stay there, or if there is no such file.
  void Add(const NameChange& change);
  /// Whether nothing will stand at `path`, not even a link that leads nowhere.
  bool IsFree(const std::string& path);
  const std::vector<RenameStep>& Steps() const { return steps_; }

 private:
  std::string Key(const std::string& path) const;
  std::string Now(const std::string& path, const NameChange& asker);
  void LearnCase(const std::string& path);

  platform::FileSystem& fileSystem_;
  std::vector<RenameStep> steps_;
  std::unordered_map<std::string, std::string> now_;   ///< names that steps changed: where their file lies; or empty
  std::unordered_map<std::string, bool> ignoresCase_;  ///< by directory
};

/// Whether steps may be done that undo will not know of, because the journal cannot take them.
enum class NotedPlan { IfPossible, Required };

/// Notes all steps, lasting before the first is done, then does them. After a failure those done are taken back, and
/// if that leaves everything as it was, the notes too. Throws UserError, OtherFileSystem among them, and
/// Cancelled, which counts as a failure and becomes a UserError where a file cannot have its old name back. Whatever
/// was moved to the trash before one stays there; undo brings it back.
void RunSteps(const std::vector<RenameStep>& steps, NotedPlan noted, const RenameTools& tools);

/// The same for changes that are not worked out yet.
void RunChanges(const std::vector<NameChange>& changes, const RenameTools& tools);

/// Whether nothing stands at `path`, not even a link that leads nowhere.
bool IsNameFree(const std::string& path, platform::FileSystem& fileSystem);

}  // namespace ml::catalogue
