#include "catalogue/delete_files.h"

#include <sys/stat.h>

#include <cerrno>

#include "catalogue/messages.h"
#include "catalogue/rename_steps.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"

namespace ml::catalogue {
namespace {

using platform::UserError;

void PutIntoTrash(const std::string& path, const DeleteTools& tools) {
  if (tools.batch != nullptr) tools.batch->WillTrash(path);
  try {
    tools.trash.Put(platform::AbsolutePath(path));
  } catch (const UserError& error) {
    throw UserError(ErrorDeletingImage(path) + "\n" + error.what());
  }
}

void Remove(const std::string& path, const DeleteTools& tools) {
  if (tools.batch != nullptr) tools.batch->WillLose(path, kDeletedForGood);
  if (tools.fileSystem.Unlink(path) != 0) {
    throw UserError(ErrorDeletingImage(path) + "\n" + platform::ErrorText(errno));
  }
}

/// Where "Deleted" is missing it is made.
std::string DeletedFolder(const std::string& path, const DeleteTools& tools) {
  auto folder = platform::JoinPath(platform::DirectoryOf(path), "Deleted");
  struct stat status {};
  if (tools.fileSystem.Stat(folder, platform::Links::Follow, status) == 0) {
    if (!S_ISDIR(status.st_mode)) throw UserError(ExistsButIsNoDirectory(folder));
    return folder;
  }
  constexpr mode_t kAsTheUserWants = 0777;  // less the umask
  if (tools.fileSystem.Mkdir(folder, kAsTheUserWants) != 0)
    throw UserError(platform::messages::kErrorCreatingDirectory + folder);
  return folder;
}

void MoveTo(const std::string& folder, const std::string& path, const DeleteTools& tools) {
  const auto to = platform::JoinPath(folder, platform::FileName(path));
  if (!IsNameFree(to, tools.fileSystem)) PutIntoTrash(to, tools);
  if (tools.batch != nullptr) tools.batch->WillRename(path, to);
  if (tools.fileSystem.RenameNoReplace(path, to) != 0) {
    throw UserError(ErrorMovingFile(path, platform::ErrorText(errno)));
  }
}

}  // namespace

void DeleteImage(const std::string& path, DeleteTo to, const DeleteTools& tools) {
  const auto companions = tools.companions.Find(path);
  if (companions.file.empty()) throw UserError(ErrorDeletingImage(path));
  const auto folder = to == DeleteTo::DeletedFolder ? DeletedFolder(path, tools) : "";
  for (const auto& file : companions.PathsToDelete()) {
    switch (to) {
      case DeleteTo::Trash:
        PutIntoTrash(file, tools);
        break;
      case DeleteTo::DeletedFolder:
        MoveTo(folder, file, tools);
        break;
      case DeleteTo::Nowhere:
        Remove(file, tools);
        break;
    }
  }
}

}  // namespace ml::catalogue
