#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/file_system.h"

/// Times and permissions of files. Symbolic links are followed. "Read-only" means that the owner's write
/// bit is missing or that this user may not write.
namespace ml::platform {

struct FileStatus {
  std::int64_t modified = 0;  ///< nanoseconds since 1970
  mode_t mode = 0;            ///< the twelve permission bits

  bool operator==(const FileStatus&) const = default;
};

enum class ModificationTimePolicy { LetStand, Restore };

/// Nothing if there is no such file; errno tells why.
std::optional<FileStatus> ReadFileStatus(const std::string& path, FileSystem& fileSystem = RealFileSystem());
/// Writes back what differs; does nothing if the file is gone. Throws UserError.
void RestoreFileStatus(const std::string& path, const FileStatus& saved, ModificationTimePolicy policy,
                       FileSystem& fileSystem = RealFileSystem());

/// False for a file that does not exist, true for one that cannot be looked at.
bool IsReadOnly(const std::string& path, FileSystem& fileSystem = RealFileSystem());
/// True if the file can be written now, with the owner's write bit added if that was what it took.
[[nodiscard]] bool MakeWritable(const std::string& path, FileSystem& fileSystem = RealFileSystem());
/// Takes all write bits. Throws UserError.
void SetReadOnly(const std::string& path, FileSystem& fileSystem = RealFileSystem());
/// Nanoseconds since 1970; the time of the last access stays. Throws UserError.
void SetModificationTime(const std::string& path, std::int64_t nanoseconds, FileSystem& fileSystem = RealFileSystem());

/// Remembers a file's status and puts it back at the end of the scope, but only if something was done
/// through this guard: the file made writable by it, or its owner told it of a write.
class FileStatusGuard {
 public:
  FileStatusGuard(std::string path, ModificationTimePolicy policy, FileSystem& fileSystem = RealFileSystem());
  FileStatusGuard(const FileStatusGuard&) = delete;
  FileStatusGuard& operator=(const FileStatusGuard&) = delete;
  /// A status that cannot be put back any more is let be: a destructor has nobody to tell.
  ~FileStatusGuard();

  [[nodiscard]] bool MakeWritable();
  void Wrote() noexcept { disturbed_ = true; }
  /// Puts the status back now, so that a failure can be told. Throws UserError.
  void Restore();

 private:
  std::string path_;
  ModificationTimePolicy policy_;
  FileSystem& fileSystem_;
  std::optional<FileStatus> saved_;
  bool disturbed_ = false;
};

}  // namespace ml::platform
