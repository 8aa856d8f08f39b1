#include "platform/file_system.h"

#include <cerrno>
#include <cstring>

#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/open_file.h"
#include "platform/paths.h"

namespace ml::platform {

namespace {

constexpr int kMaxLinks = 40;  // as the kernel counts

}  // namespace

std::string ErrorText(int error) {
  const char* text = ::strerrordesc_np(error);
  return text != nullptr ? text : "error " + std::to_string(error);
}

void ThrowFileError(const char* sentence, const std::string& path, int error) {
  throw UserError(sentence + path + "\n" + ErrorText(error));
}

void RemoveFile(FileSystem& fileSystem, const std::string& path) {
  if (fileSystem.Unlink(path) != 0 && errno != ENOENT) ThrowFileError(messages::kUnableToRemove, path, errno);
}

std::string ResolveLinks(FileSystem& fileSystem, const std::string& path) {
  std::string result = path;
  for (int links = 0; links < kMaxLinks; ++links) {
    std::string target;
    if (fileSystem.Readlink(result, target) != 0) {
      if (errno != EINVAL && errno != ENOENT) ThrowFileError(messages::kUnableToRead, path, errno);
      return result;
    }
    result = target.starts_with('/') ? target : JoinPath(DirectoryOf(result), target);
  }
  ThrowFileError(messages::kUnableToRead, path, ELOOP);
}

void MakeDirectories(FileSystem& fileSystem, const std::string& directory) {
  struct stat status {};
  if (fileSystem.Stat(directory, Links::Follow, status) == 0 && S_ISDIR(status.st_mode)) return;
  std::string above(DirectoryOf(directory));
  while (above.size() > 1 && above.back() == '/') above.pop_back();
  if (!above.empty() && above != directory) MakeDirectories(fileSystem, above);
  if (fileSystem.Mkdir(directory, S_IRWXU) != 0 && errno != EEXIST) {
    ThrowFileError(messages::kUnableToWriteDirectory, directory, errno);
  }
  OpenDirectory(fileSystem, directory).Sync();
}

}  // namespace ml::platform
