#include "catalogue/rename_steps.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>

#include "catalogue/messages.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/paths.h"

namespace ml::catalogue {

namespace {

using platform::FileSystem;
using platform::Links;
using platform::UserError;

std::string CauseWord(int error) {
  switch (error) {
    case 0:
      return "none";
    case ENOENT:
      return "fileNotFound";
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
      return "badPath";
    case EMFILE:
    case ENFILE:
      return "tooManyOpenFiles";
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return "accessDenied";
    case ENOSPC:
    case EDQUOT:
      return "diskFull";
    default:
      return "generic";
  }
}

/// Whether the directory holds both names, so that they cannot be two spellings of one.
bool AreBothListed(const NameChange& change, FileSystem& fileSystem) {
  std::vector<std::string> names;
  const auto directory = platform::DirectoryOf(change.to);
  if (fileSystem.List(directory.empty() ? "." : std::string(directory), names) != 0) return false;
  return std::ranges::count(names, platform::FileName(change.from)) > 0 &&
         std::ranges::count(names, platform::FileName(change.to)) > 0;
}

/// What stands at the new name.
enum class Target { Free, Itself, OtherFile, OtherLink, Directory };

Target TargetOf(const NameChange& change, FileSystem& fileSystem) {
  struct stat own {};
  struct stat other {};
  if (fileSystem.Stat(change.from, Links::Keep, own) != 0) {
    throw UserError(errorRenaming(change.from, change.to));
  }
  if (fileSystem.Stat(change.to, Links::Keep, other) != 0) {
    if (errno == ENOENT) return Target::Free;
    throw UserError(errorRenaming(change.from, change.to));
  }
  const bool sameFile = own.st_ino == other.st_ino && own.st_dev == other.st_dev;
  if (sameFile && !AreBothListed(change, fileSystem)) return Target::Itself;
  if (S_ISDIR(other.st_mode)) return Target::Directory;
  return S_ISLNK(other.st_mode) ? Target::OtherLink : Target::OtherFile;
}

/// Throws if what stands at the new name must stay there.
void CheckTarget(const NameChange& change, FileSystem& fileSystem) {
  if (change.from == change.to) return;
  const auto target = TargetOf(change, fileSystem);
  if (target == Target::Directory) {
    throw UserError(errorDeleting(change.to, change.from, CauseWord(EISDIR)));
  }
  if (target != Target::OtherFile) return;
  platform::FileStatusGuard guard(change.to, platform::ModificationTimePolicy::LetStand, fileSystem);
  if (!guard.MakeWritable()) throw UserError(unableToDeleteReadOnly(change.to));
  guard.Restore();
}

void Displace(const NameChange& change, const RenameTools& tools) {
  if (tools.batch != nullptr) tools.batch->WillTrash(change.to);
  try {
    tools.trash.Put(platform::AbsolutePath(change.to));
  } catch (const UserError&) {
    const std::string directory(platform::DirectoryOf(change.to));
    const int error = tools.fileSystem.Access(directory.empty() ? "." : directory, W_OK) == 0 ? EIO : errno;
    throw UserError(errorDeleting(change.to, change.from, CauseWord(error)));
  }
}

}  // namespace

void RenameSteps::Run(const std::vector<NameChange>& changes) {
  for (const auto& change : changes) CheckTarget(change, tools_.fileSystem);
  try {
    for (const auto& change : changes) Do(change);
  } catch (...) {
    TakeBack();
    throw;
  }
}

void RenameSteps::Do(const NameChange& change) {
  if (change.from == change.to) return;
  const auto target = TargetOf(change, tools_.fileSystem);
  const bool inPlace = target == Target::Itself;
  if (target != Target::Free && !inPlace) Displace(change, tools_);
  if (tools_.batch != nullptr) tools_.batch->WillRename(change.from, change.to);
  // Whatever appeared there since is not overwritten.
  const int result = inPlace ? tools_.fileSystem.Rename(change.from, change.to)
                             : tools_.fileSystem.RenameNoReplace(change.from, change.to);
  if (result != 0 && errno == EXDEV) throw OtherFileSystem(errorRenaming(change.from, change.to));
  if (result != 0) throw UserError(errorRenaming(change.from, change.to));
  done_.push_back(change);
  if (tools_.renamed) tools_.renamed(change.from, change.to);
}

/// As far as it goes: the failure that led here is the one to be told, and undo knows every step.
void RenameSteps::TakeBack() noexcept {
  for (auto change = done_.rbegin(); change != done_.rend(); ++change) {
    try {
      const bool inPlace = TargetOf({change->to, change->from}, tools_.fileSystem) == Target::Itself;
      if (tools_.batch != nullptr) tools_.batch->WillRename(change->to, change->from);
      const int result = inPlace ? tools_.fileSystem.Rename(change->to, change->from)
                                 : tools_.fileSystem.RenameNoReplace(change->to, change->from);
      if (result == 0 && tools_.renamed) tools_.renamed(change->to, change->from);
    } catch (const std::exception&) {
      continue;
    }
  }
}

bool IsNameFree(const std::string& path, FileSystem& fileSystem) {
  struct stat status {};
  return fileSystem.Stat(path, Links::Keep, status) != 0 && errno == ENOENT;
}

}  // namespace ml::catalogue
