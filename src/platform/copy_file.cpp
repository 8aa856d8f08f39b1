#include "platform/copy_file.h"

#include <fcntl.h>

#include "platform/atomic_file.h"
#include "platform/errors.h"
#include "platform/file_identity.h"
#include "platform/file_status.h"
#include "platform/messages.h"
#include "platform/open_file.h"

namespace ml::platform {

void CopyFile(const std::string& from, const std::string& to, const CopyOptions& options) {
  auto& fileSystem = *options.edit.fileSystem;
  const auto source = OpenRegular(fileSystem, from, O_RDONLY);
  const auto identity = IdentityOf(source.Status());
  const auto status = ReadFileStatus(from, fileSystem);
  AtomicFile copy(to, {.existing = ExistingFile::Refuse,
                       .recorder = options.edit.recorder,
                       .modificationTime = identity.modified,
                       .stateDirectory = options.edit.stateDirectory,
                       .fileSystem = options.edit.fileSystem});
  const auto copied = ReadInPieces(source, 0, identity.size, [&](auto piece) {
    if (options.stop.stop_requested()) throw Cancelled();
    copy.Write(piece);
  });
  if (copied != identity.size) throw UserError(messages::kChangedMeanwhile + from);
  copy.Commit();
  // The content is there: permissions that a file system cannot hold do not make the copy worthless.
  if (status) static_cast<void>(fileSystem.Chmod(to, status->mode));
}

}  // namespace ml::platform
