#include "platform/read_directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <string_view>

namespace ml::platform {

namespace {

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};

EntryKind KindOf(unsigned char type) {
  switch (type) {
    case DT_REG:
      return EntryKind::File;
    case DT_DIR:
      return EntryKind::Directory;
    case DT_LNK:
    case DT_UNKNOWN:
      return EntryKind::Link;
    default:
      return EntryKind::Other;
  }
}

}  // namespace

DirectoryListing ReadDirectory(const std::string& directory) {
  DirectoryListing listing;
  const std::unique_ptr<DIR, CloseDirectory> handle(::opendir(directory.c_str()));
  if (!handle) return listing;
  for (errno = 0; const dirent* entry = ::readdir(handle.get()); errno = 0) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") listing.entries.push_back({std::string(name), KindOf(entry->d_type)});
  }
  listing.complete = errno == 0;
  return listing;
}

bool IsRegularFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool IsDirectory(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsMountPoint(const std::string& directory) {
  struct statx status {};
  if (::statx(AT_FDCWD, directory.c_str(), AT_SYMLINK_NOFOLLOW, STATX_TYPE, &status) != 0) return false;
  return S_ISDIR(status.stx_mode) && (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

bool IsNameTaken(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

bool Exists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

}  // namespace ml::platform
