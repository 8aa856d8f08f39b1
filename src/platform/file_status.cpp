#include "platform/file_status.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/errors.h"
#include "platform/file_identity.h"
#include "platform/messages.h"

namespace ml::platform {

namespace {

constexpr mode_t kPermissions = 07777;
constexpr mode_t kAllWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

void ChangeMode(const std::string& path, mode_t mode, FileSystem& fileSystem) {
  if (fileSystem.Chmod(path, mode) != 0) ThrowFileError(messages::kUnableToChangeStatus, path, errno);
}

bool IsMissing(int error) { return error == ENOENT || error == ENOTDIR; }

bool CanWrite(const std::string& path, const FileStatus& status, FileSystem& fileSystem) {
  return (status.mode & S_IWUSR) != 0 && fileSystem.Access(path, W_OK) == 0;
}

}  // namespace

std::optional<FileStatus> ReadFileStatus(const std::string& path, FileSystem& fileSystem) {
  struct stat status {};
  if (fileSystem.Stat(path, Links::Follow, status) != 0) return std::nullopt;
  return FileStatus{.modified = ModificationTime(status), .mode = status.st_mode & kPermissions};
}

void RestoreFileStatus(const std::string& path, const FileStatus& saved, ModificationTimePolicy policy,
                       FileSystem& fileSystem) {
  const auto now = ReadFileStatus(path, fileSystem);
  if (!now && IsMissing(errno)) return;
  if (!now) ThrowFileError(messages::kUnableToChangeStatus, path, errno);
  if (policy == ModificationTimePolicy::Restore && now->modified != saved.modified) {
    SetModificationTime(path, saved.modified, fileSystem);
  }
  if (now->mode != saved.mode) ChangeMode(path, saved.mode, fileSystem);
}

bool IsReadOnly(const std::string& path, FileSystem& fileSystem) {
  const auto status = ReadFileStatus(path, fileSystem);
  return status ? !CanWrite(path, *status, fileSystem) : !IsMissing(errno);
}

bool MakeWritable(const std::string& path, FileSystem& fileSystem) {
  const auto status = ReadFileStatus(path, fileSystem);
  if (!status) return false;
  if (CanWrite(path, *status, fileSystem)) return true;
  if (fileSystem.Chmod(path, status->mode | S_IWUSR) != 0) return false;
  const auto now = ReadFileStatus(path, fileSystem);
  return now && CanWrite(path, *now, fileSystem);
}

void SetReadOnly(const std::string& path, FileSystem& fileSystem) {
  const auto status = ReadFileStatus(path, fileSystem);
  if (!status) ThrowFileError(messages::kUnableToChangeStatus, path, errno);
  if ((status->mode & kAllWriteBits) != 0) ChangeMode(path, status->mode & ~kAllWriteBits, fileSystem);
}

void SetModificationTime(const std::string& path, std::int64_t nanoseconds, FileSystem& fileSystem) {
  if (fileSystem.SetModificationTime(path, nanoseconds) != 0) {
    ThrowFileError(messages::kUnableToChangeStatus, path, errno);
  }
}

FileStatusGuard::FileStatusGuard(std::string path, ModificationTimePolicy policy, FileSystem& fileSystem)
    : path_(std::move(path)), policy_(policy), fileSystem_(fileSystem), saved_(ReadFileStatus(path_, fileSystem)) {}

FileStatusGuard::~FileStatusGuard() {
  try {
    Restore();
  } catch (const UserError&) {
    return;
  }
}

bool FileStatusGuard::MakeWritable() {
  const auto status = ReadFileStatus(path_, fileSystem_);
  if (!status) return false;
  if (CanWrite(path_, *status, fileSystem_)) return true;
  disturbed_ = true;  // before the attempt: it may add the bit and still not help
  return platform::MakeWritable(path_, fileSystem_);
}

void FileStatusGuard::Restore() {
  if (!std::exchange(disturbed_, false) || !saved_) return;
  RestoreFileStatus(path_, *saved_, policy_, fileSystem_);
}

}  // namespace ml::platform
