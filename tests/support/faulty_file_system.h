#pragma once

#include <string>

#include "platform/file_system.h"

namespace ml::test {

enum class Fault {
  Eio,          ///< one call fails
  Enospc,       ///< one call fails
  ShortWrite,   ///< one write takes half of its bytes
  DiskFull,     ///< from one call on nothing grows, and no name or directory is made
  Kill,         ///< the process ends instead of the call
  KillInWrite,  ///< the process ends within a write, or right after any other call
};
inline constexpr Fault kFaults[] = {Fault::Eio,      Fault::Enospc, Fault::ShortWrite,
                                    Fault::DiskFull, Fault::Kill,   Fault::KillInWrite};

constexpr bool IsKill(Fault fault) { return fault == Fault::Kill || fault == Fault::KillInWrite; }
/// With this the process ends at a kill.
inline constexpr int kKilledExit = 77;

/// The real file system with a fault at one call, counted from 0 over all calls but Close and locks; below 0
/// there is none. Nothing waits for the disk: what was written survives the end of a process all the same.
class FaultyFileSystem : public platform::FileSystem {
 public:
  FaultyFileSystem(Fault fault, int step) : fault_(fault), step_(step) {}
  /// Whether the counted call was reached.
  bool Hit() const { return count_ > step_; }

  int Open(const std::string& path, int flags, mode_t mode) override;
  int Close(int fd) override { return real_.Close(fd); }
  ssize_t Pread(int fd, std::span<std::byte> buffer, std::uint64_t offset) override;
  ssize_t Pwrite(int fd, std::span<const std::byte> bytes, std::uint64_t offset) override;
  int Fsync(int fd) override;
  int Syncfs(int fd) override { return Fsync(fd); }
  int Ftruncate(int fd, std::uint64_t size) override;
  int Flock(int fd, int operation) override { return real_.Flock(fd, operation); }
  int Fstat(int fd, struct stat& status) override;
  int Stat(const std::string& path, platform::Links links, struct stat& status) override;
  int Access(const std::string& path, int mode) override;
  int Readlink(const std::string& path, std::string& target) override;
  int List(const std::string& directory, std::vector<std::string>& names) override;
  int Fchmod(int fd, mode_t mode) override;
  int Fchown(int fd, uid_t owner, gid_t group) override;
  int Chmod(const std::string& path, mode_t mode) override;
  int SetModificationTime(const std::string& path, std::int64_t nanoseconds) override;
  int ListXattr(const std::string& path, std::vector<std::string>& names) override;
  int GetXattr(const std::string& path, const std::string& name, std::string& value) override;
  int SetXattr(int fd, const std::string& name, const std::string& value) override;
  int Rename(const std::string& from, const std::string& to) override;
  int RenameNoReplace(const std::string& from, const std::string& to) override;
  int Unlink(const std::string& path) override;
  int Mkdir(const std::string& path, mode_t mode) override;

 private:
  enum class Growth { No, Yes };
  template <class Call>
  int Do(Growth growth, Call&& call);
  /// Whether the call that begins now is the one, or, on a full disk, a later one.
  bool Strikes(Growth growth);
  platform::FileSystem& real_ = platform::RealFileSystem();
  Fault fault_;
  int step_;
  int count_ = 0;
};

}  // namespace ml::test
