#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "platform/file_system.h"

namespace ml::platform {

/// An open file of the writing layer; closed by the destructor. Failures are UserErrors that name `label`.
/// Use from one thread at a time, except Read.
class OpenFile {
 public:
  /// Takes over `fd`. `label` is the path for messages, which need not be the one that was opened.
  OpenFile(FileSystem& fileSystem, int fd, std::string label);
  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&&) = delete;
  ~OpenFile();

  int Descriptor() const noexcept { return fd_; }
  const std::string& Label() const noexcept { return label_; }
  FileSystem& System() const noexcept { return *fileSystem_; }
  struct stat Status() const;
  std::uint64_t Size() const;

  /// Fills `buffer` from `offset` on; how many bytes there were, less than wanted only at the end.
  std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) const;
  /// Writes all or throws; what stands there after a failure is open.
  void Write(std::uint64_t offset, std::span<const std::byte> bytes);
  void Truncate(std::uint64_t size);
  /// Returns when the bytes are on the disk.
  void Sync();
  /// An exclusive lock without waiting, held until the file is closed; false if another process has it.
  bool TryLock();

 private:
  FileSystem* fileSystem_;
  int fd_;
  std::string label_;
};

/// Hands `length` bytes from `offset` on to `take`, a piece after the other, which `take` may change. How many there
/// were: fewer only where the file ends. Throws as OpenFile::Read, and what `take` throws.
std::uint64_t ReadInPieces(const OpenFile& file, std::uint64_t offset, std::uint64_t length,
                           const std::function<void(std::span<std::byte> piece)>& take);

/// Opens an existing regular file; `flags` as for open(). Throws UserError for everything else, and never
/// waits on a pipe or touches a device.
OpenFile OpenRegular(FileSystem& fileSystem, const std::string& path, int flags);

/// A directory kept open, so that a change of names can be made lasting.
class OpenDirectory {
 public:
  /// Of the file `path`. A directory that may be written but not listed cannot be opened: Sync() then has
  /// nothing to do.
  OpenDirectory(FileSystem& fileSystem, const std::string& path);
  OpenDirectory(const OpenDirectory&) = delete;
  OpenDirectory& operator=(const OpenDirectory&) = delete;
  ~OpenDirectory();
  /// Throws UserError naming the directory. File systems that cannot sync a directory are let pass.
  void Sync();

 private:
  FileSystem& fileSystem_;
  std::string path_;
  int fd_;
};

}  // namespace ml::platform
