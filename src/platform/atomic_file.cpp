#include "platform/atomic_file.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <utility>

#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/linked_overwrite.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/temporary_name.h"

namespace ml::platform {

namespace {

constexpr mode_t kNewFile = 0666;
constexpr mode_t kPrivate = 0600;
constexpr int kNameAttempts = 8;

std::optional<struct stat> StatusOf(FileSystem& fileSystem, const std::string& path) {
  struct stat status {};
  if (fileSystem.Stat(path, Links::Follow, status) == 0) return status;
  if (errno == ENOENT) return std::nullopt;
  ThrowFileError(messages::kUnableToWrite, path, errno);
}

void RefuseTarget(FileSystem& fileSystem, const std::string& path, ExistingFile existing) {
  const auto status = StatusOf(fileSystem, path);
  if (!status) return;
  if (!S_ISREG(status->st_mode)) throw UserError(messages::kNotARegularFile + path);
  if (existing == ExistingFile::Refuse) throw UserError(messages::kAlreadyExists + path);
  if (IsReadOnly(path, fileSystem)) throw UserError(messages::kReadOnly + path);
}

bool ConcernsDirectory(int error) { return error == EACCES || error == EPERM || error == EROFS || error == ENOENT; }

/// Attributes of the user must come along; those the system guards come along where it lets them.
void CopyXattrs(FileSystem& fileSystem, const std::string& from, const OpenFile& to) {
  std::vector<std::string> names;
  if (fileSystem.ListXattr(from, names) != 0) {
    if (errno == ENOTSUP) return;
    ThrowFileError(messages::kUnableToRead, from, errno);
  }
  for (const auto& name : names) {
    std::string value;
    if (fileSystem.GetXattr(from, name, value) == 0 && fileSystem.SetXattr(to.Descriptor(), name, value) == 0) {
      continue;
    }
    const bool refusedBySystem = errno == EPERM || errno == EACCES || errno == ENOTSUP || errno == ENODATA;
    if (name.starts_with("user.") || !refusedBySystem) ThrowFileError(messages::kUnableToWrite, to.Label(), errno);
  }
}

}  // namespace

AtomicFile::AtomicFile(const std::string& target, AtomicFileOptions options)
    : options_(std::move(options)), target_(ResolveLinks(*options_.fileSystem, target)), file_(CreateTemporary()) {}

OpenFile AtomicFile::CreateTemporary() {
  auto& fileSystem = *options_.fileSystem;
  RefuseTarget(fileSystem, target_, options_.existing);
  const bool exists = StatusOf(fileSystem, target_).has_value();
  const auto directory = DirectoryOf(target_);
  int fd = -1;
  for (int i = 0; i < kNameAttempts && fd < 0; ++i) {
    temporary_ = JoinPath(directory, NewTemporaryName());
    fd = fileSystem.Open(temporary_, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, exists ? kPrivate : kNewFile);
    if (fd < 0 && errno != EEXIST) break;
  }
  if (fd < 0) {
    const int error = errno;
    temporary_.clear();
    if (!ConcernsDirectory(error)) ThrowFileError(messages::kUnableToWrite, target_, error);
    ThrowFileError(messages::kUnableToWriteDirectory, directory.empty() ? "." : std::string(directory), error);
  }
  OpenFile file(fileSystem, fd, target_);
  // Tells a sweep for stale temporaries that this one is in use; without locks it is merely less safe from it.
  static_cast<void>(fileSystem.Flock(fd, LOCK_EX | LOCK_NB));
  return file;
}

AtomicFile::~AtomicFile() {
  if (!temporary_.empty()) options_.fileSystem->Unlink(temporary_);  // one that stays is recognised as stale
}

void AtomicFile::Write(std::span<const std::byte> bytes) {
  file_.Write(size_, bytes);
  hash_.Add(bytes);
  size_ += bytes.size();
}

void AtomicFile::KeepAttributes(const struct stat& old) {
  auto& fileSystem = *options_.fileSystem;
  const int fd = file_.Descriptor();
  mode_t mode = old.st_mode & 07777;
  const auto own = file_.Status();
  if ((own.st_uid != old.st_uid || own.st_gid != old.st_gid) && fileSystem.Fchown(fd, old.st_uid, old.st_gid) != 0) {
    mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    // What the old group was allowed must not pass to another one.
    if (own.st_gid != old.st_gid && fileSystem.Fchown(fd, static_cast<uid_t>(-1), old.st_gid) != 0) {
      mode &= ~static_cast<mode_t>(S_IRWXG) | (mode & S_IRWXO) << 3;
    }
  }
  if (fileSystem.Fchmod(fd, mode) != 0) ThrowFileError(messages::kUnableToWrite, target_, errno);
  CopyXattrs(fileSystem, target_, file_);
}

void AtomicFile::RefuseChangedTarget() const {
  if (options_.read && IdentityOf(target_, *options_.fileSystem) != options_.read) {
    throw UserError(messages::kChangedMeanwhile + target_);
  }
}

void AtomicFile::Record(bool replaces) {
  if (options_.recorder == nullptr) return;
  const FileEdit edit{.path = target_, .newSize = size_, .newHash = hash_.Value(), .kept = options_.kept};
  replaces ? options_.recorder->WillReplaceFile(edit) : options_.recorder->WillCreateFile(edit);
}

void AtomicFile::Publish(bool replaces) {
  auto& fileSystem = *options_.fileSystem;
  OpenDirectory directory(fileSystem, target_);
  Record(replaces);
  RefuseChangedTarget();
  // Content that does not last yet takes nobody's place.
  const bool unsynced = !replaces && options_.newFile == NewFileLasts::AfterSync;
  const bool mustBeFree = options_.existing == ExistingFile::Refuse || unsynced;
  const int result =
      mustBeFree ? fileSystem.RenameNoReplace(temporary_, target_) : fileSystem.Rename(temporary_, target_);
  if (result != 0) {
    if (errno == EEXIST) throw UserError(messages::kAlreadyExists + target_);
    ThrowFileError(messages::kUnableToWrite, target_, errno);
  }
  temporary_.clear();
  if (replaces || options_.newFile == NewFileLasts::AtOnce) directory.Sync();
}

void AtomicFile::Commit() {
  auto& fileSystem = *options_.fileSystem;
  RefuseTarget(fileSystem, target_, options_.existing);
  RefuseChangedTarget();
  const auto old = StatusOf(fileSystem, target_);
  if (old) KeepAttributes(*old);
  if (options_.modificationTime) SetModificationTime(temporary_, *options_.modificationTime, fileSystem);
  if (old || options_.newFile == NewFileLasts::AtOnce) file_.Sync();
  if (options_.check) options_.check(temporary_);
  if (!old || old->st_nlink < 2) return Publish(old.has_value());
  Record(true);
  RefuseChangedTarget();
  OverwriteLinkedFile(fileSystem, {.target = target_, .temporary = std::exchange(temporary_, {})},
                      options_.stateDirectory);
  if (options_.modificationTime) SetModificationTime(target_, *options_.modificationTime, fileSystem);
}

void ReplaceFile(const std::string& target, std::span<const std::byte> bytes, AtomicFileOptions options) {
  AtomicFile file(target, std::move(options));
  file.Write(bytes);
  file.Commit();
}

void SyncFileSystem(const std::string& directory, FileSystem& fileSystem) {
  const int fd = fileSystem.Open(directory, O_RDONLY | O_DIRECTORY, 0);
  if (fd < 0 && errno == EACCES) return;  // it may be written to but not be listed
  if (fd < 0) ThrowFileError(messages::kUnableToWriteDirectory, directory, errno);
  const int error = fileSystem.Syncfs(fd) == 0 ? 0 : errno;
  fileSystem.Close(fd);
  if (error != 0) ThrowFileError(messages::kUnableToWriteDirectory, directory, error);
}

}  // namespace ml::platform
