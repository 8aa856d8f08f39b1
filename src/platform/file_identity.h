#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/file_system.h"

namespace ml::platform {

/// Nanoseconds since 1970.
inline std::int64_t ModificationTime(const struct stat& status) noexcept {
  return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

/// Tells whether a file is still the one that was read: another file, another length or a later write all
/// make it a different one. Changed permissions do not.
struct FileIdentity {
  std::uint64_t device = 0, inode = 0, size = 0;
  std::int64_t modified = 0;  ///< nanoseconds since 1970

  bool operator==(const FileIdentity&) const = default;
};

inline FileIdentity IdentityOf(const struct stat& status) noexcept {
  return {.device = status.st_dev,
          .inode = status.st_ino,
          .size = static_cast<std::uint64_t>(status.st_size),
          .modified = ModificationTime(status)};
}

/// Of the file that `path` leads to; nothing if there is none, or it cannot be looked at.
inline std::optional<FileIdentity> IdentityOf(const std::string& path, FileSystem& fileSystem = RealFileSystem()) {
  struct stat status {};
  if (fileSystem.Stat(path, Links::Follow, status) != 0) return std::nullopt;
  return IdentityOf(status);
}

}  // namespace ml::platform
