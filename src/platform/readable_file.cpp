#include "platform/readable_file.h"

#include <fcntl.h>

#include <algorithm>

#include "platform/errors.h"
#include "platform/messages.h"

namespace ml::platform {

ReadableFile::ReadableFile(const std::string& path, FileSystem& fileSystem)
    : file_(OpenRegular(fileSystem, path, O_RDONLY)), identity_(IdentityOf(file_.Status())) {}

std::vector<std::byte> ReadableFile::Range(std::uint64_t offset, std::uint64_t length) const {
  if (offset >= Size()) return {};
  std::vector<std::byte> bytes(static_cast<std::size_t>(std::min(length, Size() - offset)));
  bytes.resize(Read(offset, bytes));
  return bytes;
}

std::optional<ReadableFile> OpenIfReadable(const std::string& path, FileSystem& fileSystem) {
  try {
    return ReadableFile(path, fileSystem);
  } catch (const UserError&) {
    return std::nullopt;
  }
}

std::vector<std::byte> ReadFile(const std::string& path, std::uint64_t limit, FileSystem& fileSystem) {
  const ReadableFile file(path, fileSystem);
  if (file.Size() > limit) throw UserError(messages::kTooLarge + path);
  return file.Range(0, file.Size());
}

}  // namespace ml::platform
