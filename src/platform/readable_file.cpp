#include "platform/readable_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/errors.h"

namespace ml::platform {
namespace {

[[noreturn]] void Refuse(const std::string& path, int error) {
  throw UserError("Unable to read file:\n" + path + "\n" + std::strerror(error));
}

}  // namespace

ReadableFile::ReadableFile(std::string path) : path_(std::move(path)) {
  // O_NONBLOCK lets the open of a FIFO return, so that it can be refused.
  descriptor_ = ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
  if (descriptor_ < 0) Refuse(path_, errno);
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) {
    ::close(std::exchange(descriptor_, -1));
    throw UserError("Unable to read file:\n" + path_ + "\nIt is not a regular file");
  }
  size_ = static_cast<std::uint64_t>(status.st_size);
}

ReadableFile::~ReadableFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

ReadableFile::ReadableFile(ReadableFile&& other) noexcept
    : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, -1)), size_(other.size_) {}

ReadableFile& ReadableFile::operator=(ReadableFile&& other) noexcept {
  std::swap(path_, other.path_);
  std::swap(descriptor_, other.descriptor_);
  std::swap(size_, other.size_);
  return *this;
}

std::size_t ReadableFile::ReadAt(std::uint64_t offset, std::span<std::byte> out) const {
  std::size_t done = 0;
  while (done < out.size() && offset + done < size_) {
    const auto count = ::pread(descriptor_, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Refuse(path_, errno);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

}  // namespace ml::platform
