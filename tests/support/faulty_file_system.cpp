#include "support/faulty_file_system.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace ml::test {

namespace {

constexpr std::uint64_t kPage = 4096;

/// What of a write reaches the disk when the process is killed in it: the system writes page by page.
std::span<const std::byte> UpToAPage(std::span<const std::byte> bytes, std::uint64_t offset) {
  const auto cut = (offset + bytes.size() / 2) / kPage * kPage;
  return cut > offset ? bytes.first(cut - offset) : bytes;
}

}  // namespace

bool FaultyFileSystem::Strikes(Growth growth) {
  const int now = count_++;
  return now == step_ || (fault_ == Fault::DiskFull && now > step_ && growth == Growth::Yes);
}

template <class Call>
int FaultyFileSystem::Do(Growth growth, Call&& call) {
  if (!Strikes(growth) || fault_ == Fault::ShortWrite || (fault_ == Fault::DiskFull && growth == Growth::No)) {
    return call();
  }
  if (fault_ == Fault::KillInWrite) call();
  if (IsKill(fault_)) ::_exit(kKilledExit);
  errno = fault_ == Fault::Eio ? EIO : ENOSPC;
  return -1;
}

ssize_t FaultyFileSystem::Pwrite(int fd, std::span<const std::byte> bytes, std::uint64_t offset) {
  struct stat status {};
  const bool grows = real_.Fstat(fd, status) != 0 || offset + bytes.size() > static_cast<std::uint64_t>(status.st_size);
  if (!Strikes(grows ? Growth::Yes : Growth::No) || (fault_ == Fault::DiskFull && !grows)) {
    return real_.Pwrite(fd, bytes, offset);
  }
  if (fault_ == Fault::KillInWrite) real_.Pwrite(fd, UpToAPage(bytes, offset), offset);
  if (IsKill(fault_)) ::_exit(kKilledExit);
  if (fault_ == Fault::ShortWrite) return real_.Pwrite(fd, bytes.first(bytes.size() / 2), offset);
  errno = fault_ == Fault::Eio ? EIO : ENOSPC;
  return -1;
}

ssize_t FaultyFileSystem::Pread(int fd, std::span<std::byte> buffer, std::uint64_t offset) {
  ssize_t got = 0;
  const int result = Do(Growth::No, [&] {
    got = real_.Pread(fd, buffer, offset);
    return got < 0 ? -1 : 0;
  });
  return result < 0 ? -1 : got;
}
int FaultyFileSystem::Open(const std::string& path, int flags, mode_t mode) {
  const auto growth = (flags & O_CREAT) != 0 ? Growth::Yes : Growth::No;
  return Do(growth, [&] { return real_.Open(path, flags, mode); });
}
int FaultyFileSystem::Fsync(int fd) {
  return Do(Growth::No, [&] { return ::fcntl(fd, F_GETFD) < 0 ? -1 : 0; });
}
int FaultyFileSystem::Ftruncate(int fd, std::uint64_t size) {
  return Do(Growth::No, [&] { return real_.Ftruncate(fd, size); });
}
int FaultyFileSystem::Fstat(int fd, struct stat& status) {
  return Do(Growth::No, [&] { return real_.Fstat(fd, status); });
}
int FaultyFileSystem::Stat(const std::string& path, platform::Links links, struct stat& status) {
  return Do(Growth::No, [&] { return real_.Stat(path, links, status); });
}
int FaultyFileSystem::Access(const std::string& path, int mode) {
  return Do(Growth::No, [&] { return real_.Access(path, mode); });
}
int FaultyFileSystem::Readlink(const std::string& path, std::string& target) {
  return Do(Growth::No, [&] { return real_.Readlink(path, target); });
}
int FaultyFileSystem::List(const std::string& directory, std::vector<std::string>& names) {
  return Do(Growth::No, [&] { return real_.List(directory, names); });
}
int FaultyFileSystem::Fchmod(int fd, mode_t mode) {
  return Do(Growth::No, [&] { return real_.Fchmod(fd, mode); });
}
int FaultyFileSystem::Fchown(int fd, uid_t owner, gid_t group) {
  return Do(Growth::No, [&] { return real_.Fchown(fd, owner, group); });
}
int FaultyFileSystem::Chmod(const std::string& path, mode_t mode) {
  return Do(Growth::No, [&] { return real_.Chmod(path, mode); });
}
int FaultyFileSystem::SetModificationTime(const std::string& path, std::int64_t nanoseconds) {
  return Do(Growth::No, [&] { return real_.SetModificationTime(path, nanoseconds); });
}
int FaultyFileSystem::ListXattr(const std::string& path, std::vector<std::string>& names) {
  return Do(Growth::No, [&] { return real_.ListXattr(path, names); });
}
int FaultyFileSystem::GetXattr(const std::string& path, const std::string& name, std::string& value) {
  return Do(Growth::No, [&] { return real_.GetXattr(path, name, value); });
}
int FaultyFileSystem::SetXattr(int fd, const std::string& name, const std::string& value) {
  return Do(Growth::Yes, [&] { return real_.SetXattr(fd, name, value); });
}
int FaultyFileSystem::Rename(const std::string& from, const std::string& to) {
  return Do(Growth::Yes, [&] { return real_.Rename(from, to); });
}
int FaultyFileSystem::RenameNoReplace(const std::string& from, const std::string& to) {
  return Do(Growth::Yes, [&] { return real_.RenameNoReplace(from, to); });
}
int FaultyFileSystem::Unlink(const std::string& path) {
  return Do(Growth::No, [&] { return real_.Unlink(path); });
}
int FaultyFileSystem::Mkdir(const std::string& path, mode_t mode) {
  return Do(Growth::Yes, [&] { return real_.Mkdir(path, mode); });
}

}  // namespace ml::test
