#include "platform/copy_file.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/messages.h"
#include "platform/readable_file.h"

namespace ml::platform {

void CopyFile(const std::string& from, const std::string& to, const CopyOptions& options) {
  constexpr std::uint64_t kChunk = std::uint64_t{1} << 20;
  auto& fileSystem = *options.edit.fileSystem;
  const ReadableFile source(from, fileSystem);
  const auto status = ReadFileStatus(from, fileSystem);
  AtomicFile copy(to, {.existing = ExistingFile::Refuse,
                       .recorder = options.edit.recorder,
                       .modificationTime = source.Identity().modified,
                       .stateDirectory = options.edit.stateDirectory,
                       .fileSystem = options.edit.fileSystem});
  std::vector<std::byte> buffer;
  for (std::uint64_t at = 0; at < source.Size(); at += buffer.size()) {
    if (options.stop.stop_requested()) throw Cancelled();
    buffer.resize(static_cast<std::size_t>(std::min(kChunk, source.Size() - at)));
    if (source.Read(at, buffer) != buffer.size()) throw UserError(messages::kChangedMeanwhile + from);
    copy.Write(buffer);
  }
  copy.Commit();
  // The content is there: permissions that a file system cannot hold do not make the copy worthless.
  if (status) static_cast<void>(fileSystem.Chmod(to, status->mode));
}

}  // namespace ml::platform
