#include "platform/file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <memory>
#include <string_view>

namespace ml::platform {

namespace {

template <class Call>
auto Repeat(Call&& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

/// A call that is asked for the size first and then for the bytes; again when they grew in between.
template <class Call>
int ReadGrowing(std::string& value, Call&& call) {
  for (;;) {
    const auto size = call(nullptr, std::size_t{0});
    if (size < 0) return -1;
    value.resize(static_cast<std::size_t>(size));
    if (size == 0) return 0;
    const auto got = call(value.data(), value.size());
    if (got >= 0) {
      value.resize(static_cast<std::size_t>(got));
      return 0;
    }
    if (errno != ERANGE) return -1;
  }
}

/// For file systems whose rename knows no flags: a second name, then the first one removed; where there
/// are no second names either, a look before a plain rename.
int RenameByLink(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) == 0) return ::unlink(from.c_str());
  if (errno != EPERM && errno != ENOTSUP && errno != ENOSYS) return -1;
  struct stat ignored;
  if (::lstat(to.c_str(), &ignored) == 0) {
    errno = EEXIST;
    return -1;
  }
  return ::rename(from.c_str(), to.c_str());
}

class SystemFileSystem final : public FileSystem {
 public:
  int Open(const std::string& path, int flags, mode_t mode) override {
    return Repeat([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); });
  }
  int Close(int fd) override { return ::close(fd); }
  ssize_t Pread(int fd, std::span<std::byte> buffer, std::uint64_t offset) override {
    return Repeat([&] { return ::pread(fd, buffer.data(), buffer.size(), static_cast<off_t>(offset)); });
  }
  ssize_t Pwrite(int fd, std::span<const std::byte> bytes, std::uint64_t offset) override {
    return Repeat([&] { return ::pwrite(fd, bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
  }
  int Syncfs(int fd) override {
    return Repeat([&] { return ::syncfs(fd); });
  }
  int Fsync(int fd) override {
    return Repeat([&] { return ::fsync(fd); });
  }
  int Ftruncate(int fd, std::uint64_t size) override {
    return Repeat([&] { return ::ftruncate(fd, static_cast<off_t>(size)); });
  }
  int Flock(int fd, int operation) override {
    return Repeat([&] { return ::flock(fd, operation); });
  }

  int Fstat(int fd, struct stat& status) override { return ::fstat(fd, &status); }
  int Stat(const std::string& path, Links links, struct stat& status) override {
    return links == Links::Follow ? ::stat(path.c_str(), &status) : ::lstat(path.c_str(), &status);
  }
  int Access(const std::string& path, int mode) override {
    return ::faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS);
  }
  int Readlink(const std::string& path, std::string& target) override {
    std::array<char, PATH_MAX> buffer{};
    const auto length = ::readlink(path.c_str(), buffer.data(), buffer.size());
    if (length < 0) return -1;
    target.assign(buffer.data(), static_cast<std::size_t>(length));
    return 0;
  }
  int List(const std::string& directory, std::vector<std::string>& names) override {
    names.clear();
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(directory.c_str()), ::closedir);
    if (stream == nullptr) return -1;
    errno = 0;
    while (const dirent* entry = ::readdir(stream.get())) {
      const std::string_view name = entry->d_name;
      if (name != "." && name != "..") names.emplace_back(name);
    }
    return errno == 0 ? 0 : -1;
  }

  int Fchmod(int fd, mode_t mode) override { return ::fchmod(fd, mode); }
  int Fchown(int fd, uid_t owner, gid_t group) override { return ::fchown(fd, owner, group); }
  int Chmod(const std::string& path, mode_t mode) override { return ::chmod(path.c_str(), mode); }
  int SetModificationTime(const std::string& path, std::int64_t nanoseconds) override {
    constexpr std::int64_t kSecond = 1'000'000'000;
    const auto fraction = (nanoseconds % kSecond + kSecond) % kSecond;  // times before 1970 are below 0
    const timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT},
                               {.tv_sec = (nanoseconds - fraction) / kSecond, .tv_nsec = fraction}};
    return ::utimensat(AT_FDCWD, path.c_str(), times, 0);
  }
  int ListXattr(const std::string& path, std::vector<std::string>& names) override {
    std::string list;
    names.clear();
    if (ReadGrowing(list, [&](char* to, std::size_t size) { return ::listxattr(path.c_str(), to, size); }) != 0) {
      return -1;
    }
    for (std::size_t start = 0; start < list.size(); start += names.back().size() + 1) {
      names.emplace_back(list.c_str() + start);
    }
    return 0;
  }
  int GetXattr(const std::string& path, const std::string& name, std::string& value) override {
    return ReadGrowing(value,
                       [&](char* to, std::size_t size) { return ::getxattr(path.c_str(), name.c_str(), to, size); });
  }
  int SetXattr(int fd, const std::string& name, const std::string& value) override {
    return ::fsetxattr(fd, name.c_str(), value.data(), value.size(), 0);
  }

  int Rename(const std::string& from, const std::string& to) override { return ::rename(from.c_str(), to.c_str()); }
  int RenameNoReplace(const std::string& from, const std::string& to) override {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    return errno == EINVAL || errno == ENOSYS ? RenameByLink(from, to) : -1;
  }
  int Unlink(const std::string& path) override { return ::unlink(path.c_str()); }
  int Mkdir(const std::string& path, mode_t mode) override { return ::mkdir(path.c_str(), mode); }
};

}  // namespace

FileSystem& RealFileSystem() {
  static SystemFileSystem fileSystem;
  return fileSystem;
}

}  // namespace ml::platform
