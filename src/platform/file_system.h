#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ml::platform {

enum class Links { Follow, Keep };

/// The system calls of the writing layer, one function each, so that a test can fail or kill at every one.
/// They behave like the calls they are named after: below 0 and errno set on failure. Calls that a signal
/// interrupted are repeated.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Always close-on-exec.
  virtual int Open(const std::string& path, int flags, mode_t mode) = 0;
  virtual int Close(int fd) = 0;
  virtual ssize_t Pread(int fd, std::span<std::byte> buffer, std::uint64_t offset) = 0;
  virtual ssize_t Pwrite(int fd, std::span<const std::byte> bytes, std::uint64_t offset) = 0;
  virtual int Fsync(int fd) = 0;
  /// Of the whole file system that holds the file.
  virtual int Syncfs(int fd) = 0;
  virtual int Ftruncate(int fd, std::uint64_t size) = 0;
  virtual int Flock(int fd, int operation) = 0;

  virtual int Fstat(int fd, struct stat& status) = 0;
  virtual int Stat(const std::string& path, Links links, struct stat& status) = 0;
  virtual int Access(const std::string& path, int mode) = 0;
  virtual int Readlink(const std::string& path, std::string& target) = 0;
  /// Names in a directory without "." and "..", in no order.
  virtual int List(const std::string& directory, std::vector<std::string>& names) = 0;

  virtual int Fchmod(int fd, mode_t mode) = 0;
  virtual int Fchown(int fd, uid_t owner, gid_t group) = 0;
  virtual int Chmod(const std::string& path, mode_t mode) = 0;
  /// Nanoseconds since 1970; the time of the last access stays. Links are followed.
  virtual int SetModificationTime(const std::string& path, std::int64_t nanoseconds) = 0;
  virtual int ListXattr(const std::string& path, std::vector<std::string>& names) = 0;
  virtual int GetXattr(const std::string& path, const std::string& name, std::string& value) = 0;
  virtual int SetXattr(int fd, const std::string& name, const std::string& value) = 0;

  virtual int Rename(const std::string& from, const std::string& to) = 0;
  /// Fails with EEXIST where `to` exists.
  virtual int RenameNoReplace(const std::string& from, const std::string& to) = 0;
  virtual int Unlink(const std::string& path) = 0;
  virtual int Mkdir(const std::string& path, mode_t mode) = 0;
};

/// The machine's own. Lives as long as the program.
FileSystem& RealFileSystem();

/// What the system calls an error, always in English.
std::string ErrorText(int error);
/// Throws UserError: `sentence`, `path` and, on a line of its own, the text of `error`.
[[noreturn]] void ThrowFileError(const char* sentence, const std::string& path, int error);

/// Throws UserError; a file that is gone already is no failure.
void RemoveFile(FileSystem& fileSystem, const std::string& path);

/// Where `path` leads: symbolic links at its end are followed, also to a file that does not exist yet.
/// Throws UserError for a circle.
std::string ResolveLinks(FileSystem& fileSystem, const std::string& path);

/// Makes `directory` and what is missing above it, for this user only, lasting. Throws UserError.
void MakeDirectories(FileSystem& fileSystem, const std::string& directory);

}  // namespace ml::platform
