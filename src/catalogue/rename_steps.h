#pragma once

#include <string>
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

/// The name changes of one image and its companions; those done are taken back unless all of them are.
class RenameSteps {
 public:
  explicit RenameSteps(const RenameTools& tools) : tools_(tools) {}
  RenameSteps(const RenameSteps&) = delete;
  RenameSteps& operator=(const RenameSteps&) = delete;

  /// Throws UserError, OtherFileSystem among them. Whatever was moved to the trash before a failure stays there; undo
  /// brings it back.
  void Run(const std::vector<NameChange>& changes);

 private:
  void Do(const NameChange& change);
  void TakeBack() noexcept;

  const RenameTools& tools_;
  std::vector<NameChange> done_;
};

/// Whether nothing stands at `path`, not even a link that leads nowhere.
bool IsNameFree(const std::string& path, platform::FileSystem& fileSystem);

}  // namespace ml::catalogue
