#include "platform/open_file.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"

namespace ml::platform {

OpenFile::OpenFile(FileSystem& fileSystem, int fd, std::string label)
    : fileSystem_(&fileSystem), fd_(fd), label_(std::move(label)) {}

OpenFile::OpenFile(OpenFile&& other) noexcept
    : fileSystem_(other.fileSystem_), fd_(std::exchange(other.fd_, -1)), label_(std::move(other.label_)) {}

OpenFile::~OpenFile() {
  if (fd_ >= 0) fileSystem_->Close(fd_);  // whatever matters was synced before
}

struct stat OpenFile::Status() const {
  struct stat status {};
  if (fileSystem_->Fstat(fd_, status) != 0) ThrowFileError(messages::kUnableToRead, label_, errno);
  return status;
}

std::uint64_t OpenFile::Size() const { return static_cast<std::uint64_t>(Status().st_size); }

std::size_t OpenFile::Read(std::uint64_t offset, std::span<std::byte> buffer) const {
  std::size_t done = 0;
  while (done < buffer.size()) {
    const auto got = fileSystem_->Pread(fd_, buffer.subspan(done), offset + done);
    if (got < 0) ThrowFileError(messages::kUnableToRead, label_, errno);
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

void OpenFile::Write(std::uint64_t offset, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const auto put = fileSystem_->Pwrite(fd_, bytes, offset);
    if (put <= 0) ThrowFileError(messages::kUnableToWrite, label_, put < 0 ? errno : ENOSPC);
    offset += static_cast<std::uint64_t>(put);
    bytes = bytes.subspan(static_cast<std::size_t>(put));
  }
}

void OpenFile::Truncate(std::uint64_t size) {
  if (fileSystem_->Ftruncate(fd_, size) != 0) ThrowFileError(messages::kUnableToWrite, label_, errno);
}

void OpenFile::Sync() {
  if (fileSystem_->Fsync(fd_) != 0) ThrowFileError(messages::kUnableToWrite, label_, errno);
}

bool OpenFile::TryLock() {
  if (fileSystem_->Flock(fd_, LOCK_EX | LOCK_NB) == 0) return true;
  if (errno != EWOULDBLOCK) ThrowFileError(messages::kUnableToWrite, label_, errno);
  return false;
}

std::uint64_t ReadInPieces(const OpenFile& file, std::uint64_t offset, std::uint64_t length,
                           const std::function<void(std::span<std::byte> piece)>& take) {
  constexpr std::uint64_t kPiece = std::uint64_t{1} << 20;
  std::vector<std::byte> buffer(static_cast<std::size_t>(std::min(kPiece, length)));
  std::uint64_t done = 0;
  while (done < length) {
    const auto rest = std::min<std::uint64_t>(buffer.size(), length - done);
    const auto wanted = std::span(buffer).first(static_cast<std::size_t>(rest));
    const auto got = file.Read(offset + done, wanted);
    if (got > 0) take(wanted.first(got));
    done += got;
    if (got < wanted.size()) break;
  }
  return done;
}

OpenFile OpenRegular(FileSystem& fileSystem, const std::string& path, int flags) {
  const char* sentence = (flags & O_ACCMODE) == O_RDONLY ? messages::kUnableToRead : messages::kUnableToWrite;
  // Looked at before it is opened: opening alone can already move a device.
  struct stat status {};
  if (fileSystem.Stat(path, Links::Follow, status) != 0) ThrowFileError(sentence, path, errno);
  if (!S_ISREG(status.st_mode)) throw UserError(messages::kNotARegularFile + path);
  const int fd = fileSystem.Open(path, flags | O_NONBLOCK | O_NOCTTY, 0);
  if (fd < 0) ThrowFileError(sentence, path, errno);
  OpenFile file(fileSystem, fd, path);
  if (!S_ISREG(file.Status().st_mode)) throw UserError(messages::kNotARegularFile + path);
  return file;
}

OpenDirectory::OpenDirectory(FileSystem& fileSystem, const std::string& path) : fileSystem_(fileSystem), path_(".") {
  if (const auto directory = DirectoryOf(path); !directory.empty()) path_ = directory;
  fd_ = fileSystem_.Open(path_, O_RDONLY | O_DIRECTORY, 0);
  if (fd_ < 0 && errno != EACCES) ThrowFileError(messages::kUnableToWriteDirectory, path_, errno);
}

OpenDirectory::~OpenDirectory() {
  if (fd_ >= 0) fileSystem_.Close(fd_);
}

void OpenDirectory::Sync() {
  if (fd_ < 0 || fileSystem_.Fsync(fd_) == 0 || errno == EINVAL || errno == ENOTSUP) return;
  ThrowFileError(messages::kUnableToWriteDirectory, path_, errno);
}

}  // namespace ml::platform
