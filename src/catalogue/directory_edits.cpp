#include "catalogue/directory_edits.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "catalogue/messages.h"
#include "catalogue/rename_steps.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::catalogue {

using platform::UserError;

namespace {

/// Whole volumes would go with a directory in which they are mounted. What the user may not look into is left out: it
/// cannot be deleted either. Throws UserError, also where it cannot be told.
void RefuseMountedVolumes(const std::string& directory) {
  using std::filesystem::recursive_directory_iterator;
  std::error_code error;
  if (std::filesystem::is_symlink(directory, error)) return;  // the link alone is deleted
  recursive_directory_iterator entry(directory, std::filesystem::directory_options::skip_permission_denied, error);
  for (; !error && entry != recursive_directory_iterator(); entry.increment(error)) {
    std::error_code ignored;  // what is no directory is known from the listing, without a look at each file
    if (entry->is_directory(ignored) && platform::IsMountPoint(entry->path().native())) {
      throw UserError(VolumeInDirectory(directory, entry->path().native()));
    }
  }
  if (error) throw UserError(ErrorDeletingImage(directory) + "\n" + error.message());
}

}  // namespace

std::optional<std::string> RefuseFolderName(const std::string& name) {
  if (!platform::IsPortableName(name)) return kFolderNameNotTaken;
  return std::nullopt;
}

std::string MakeFolder(const std::string& parent, const std::string& name) {
  constexpr mode_t kAsTheUserWants = 0777;  // less the umask
  auto path = platform::JoinPath(parent, name);
  if (platform::RealFileSystem().Mkdir(path, kAsTheUserWants) != 0) {
    throw UserError(ErrorCreatingFolder(path) + "\n" + platform::ErrorText(errno));
  }
  return path;
}

std::string RenameDirectory(const std::string& directory, const std::string& name, platform::EditBatch* batch) {
  auto& fileSystem = platform::RealFileSystem();
  auto to = std::string(platform::DirectoryOf(directory)) + name;
  const bool taken = !IsNameFree(to, fileSystem);
  const bool sameDirectory =
      taken && platform::SameFile(directory, to) && platform::EqualsFolded(platform::FileName(directory), name);
  if (taken && !sameDirectory) throw UserError(DirectoryNameTaken(to));
  if (batch != nullptr) batch->WillRename(directory, to);
  const int result = sameDirectory ? fileSystem.Rename(directory, to) : fileSystem.RenameNoReplace(directory, to);
  if (result != 0) throw UserError(ErrorRenaming(directory, to) + "\n" + platform::ErrorText(errno));
  return to;
}

void DeleteDirectory(const std::string& directory, DeleteTo to, platform::Trash& trash, platform::EditBatch* batch) {
  RefuseMountedVolumes(directory);
  if (to == DeleteTo::Trash) {
    if (batch != nullptr) batch->WillTrash(directory);
    return trash.Put(directory);
  }
  if (batch != nullptr) batch->WillLose(directory, kDeletedForGood);
  std::error_code error;
  std::filesystem::remove_all(directory, error);
  if (error) throw UserError(ErrorDeletingImage(directory) + "\n" + error.message());
}

}  // namespace ml::catalogue
