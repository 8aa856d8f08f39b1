#include "support/faulty_file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <iostream>

#include "platform/errors.h"

namespace ml::test {

namespace {

constexpr int kDone = 0, kRefused = 1, kKilled = 77, kBroken = 99;
constexpr int kMaxRuns = 2000;
constexpr uid_t kNobody = 65534;
constexpr std::size_t kPage = 4096;

/// How many bytes of a write are on the disk when the process is killed in it: whole pages where there are any.
std::size_t HalfOf(std::size_t size) { return size / 2 > kPage ? size / 2 / kPage * kPage : size / 2; }

int RunInChild(const std::function<int()>& act) {
  std::cout.flush();
  const pid_t child = ::fork();
  if (child == 0) {
    int result = kBroken;
    try {
      result = act();
    } catch (const std::exception& error) {
      std::cerr << "child: " << error.what() << std::endl;
    }
    ::_exit(result);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : kBroken;
}

}  // namespace

bool FaultyFileSystem::Strikes(Growth growth) {
  if (before) before(count_);
  const int now = count_++;
  return now == step_ || (fault_ == Fault::DiskFull && now > step_ && growth == Growth::Yes);
}

template <class Call>
int FaultyFileSystem::Do(Growth growth, Call&& call) {
  if (!Strikes(growth) || fault_ == Fault::ShortWrite || (fault_ == Fault::DiskFull && growth == Growth::No)) {
    return call();
  }
  if (fault_ == Fault::KillInWrite) call();
  if (IsKill(fault_)) ::_exit(kKilled);
  errno = fault_ == Fault::Eio ? EIO : ENOSPC;
  return -1;
}

ssize_t FaultyFileSystem::Pwrite(int fd, std::span<const std::byte> bytes, std::uint64_t offset) {
  struct stat status {};
  const bool grows = real_.Fstat(fd, status) != 0 || offset + bytes.size() > static_cast<std::uint64_t>(status.st_size);
  if (!Strikes(grows ? Growth::Yes : Growth::No) || (fault_ == Fault::DiskFull && !grows)) {
    return real_.Pwrite(fd, bytes, offset);
  }
  if (fault_ == Fault::Kill) ::_exit(kKilled);
  const auto half = bytes.first(HalfOf(bytes.size()));
  if (fault_ == Fault::ShortWrite || fault_ == Fault::KillInWrite) {
    const auto put = real_.Pwrite(fd, half, offset);
    if (fault_ == Fault::KillInWrite) ::_exit(kKilled);
    return put;
  }
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
  return Do(Growth::No, [&] { return real_.Fsync(fd); });
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

int SweepFaults(Fault fault, const std::function<void()>& prepare,
                const std::function<void(platform::FileSystem&)>& act, const std::function<void(Outcome)>& verify) {
  for (int step = 0; step < kMaxRuns; ++step) {
    const testing::ScopedTrace trace(__FILE__, __LINE__,
                                     "fault " + std::to_string(static_cast<int>(fault)) + " at call " + std::to_string(step));
    prepare();
    FaultyFileSystem faulty(fault, step);
    const auto run = [&] {
      try {
        act(faulty);
        return kDone;
      } catch (const platform::UserError&) {
        return kRefused;
      }
    };
    const bool kills = fault == Fault::Kill || fault == Fault::KillInWrite;
    const int result = kills ? RunInChild(run) : run();
    EXPECT_NE(result, kBroken);
    verify(result == kDone ? Outcome::Done : result == kRefused ? Outcome::Refused : Outcome::Killed);
    if (testing::Test::HasFailure()) return step;
    if (kills ? result != kKilled : !faulty.Hit()) return step;
  }
  ADD_FAILURE() << "no end after " << kMaxRuns << " runs";
  return kMaxRuns;
}

bool RunAsNobody(const std::function<bool()>& act) {
  return RunInChild([&] {
           const bool isRoot = ::geteuid() == 0;
           if (isRoot && (::setgroups(0, nullptr) != 0 || ::setresgid(kNobody, kNobody, kNobody) != 0 ||
                          ::setresuid(kNobody, kNobody, kNobody) != 0)) {
             return kBroken;
           }
           return act() ? kDone : kRefused;
         }) == kDone;
}

}  // namespace ml::test
