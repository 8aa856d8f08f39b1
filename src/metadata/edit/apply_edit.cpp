#include "metadata/edit/apply_edit.h"

#include <algorithm>
#include <vector>

#include "metadata/messages.h"
#include "platform/atomic_file.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::uint64_t kCopyChunk = std::uint64_t{1} << 16;

void Copy(const ByteSource& from, platform::AtomicFile& to, const std::string& path) {
  std::vector<std::byte> buffer(static_cast<std::size_t>(std::min(kCopyChunk, from.Size())));
  for (std::uint64_t at = 0; at < from.Size(); at += buffer.size()) {
    buffer.resize(static_cast<std::size_t>(std::min(kCopyChunk, from.Size() - at)));
    if (from.ReadSome(at, buffer) != buffer.size()) throw platform::UserError(messages::ChangedWhileRead(path));
    to.Write(buffer);
  }
}

}  // namespace

bool ApplyEdit(const platform::ReadableFile& file, const EditedFile& edited, const platform::EditOptions& options,
               const EditCheck& check) {
  if (!edited.Touched()) return false;
  if (check) check(edited);
  if (options.insteadOfWriting) {
    options.insteadOfWriting(file.Path());
    return true;
  }
  if (auto patches = edited.InPlace()) {
    patches->read = file.Identity();
    platform::ApplyPatches(file.Path(), *patches, options);
    return true;
  }
  const auto readBack = [&](const std::string& newFile) {
    const platform::ReadableFile written(newFile, *options.fileSystem);
    const FileSource source(written);
    if (!SameBytes(source, {0, source.Size()}, edited, {0, edited.Size()})) {
      throw platform::UserError(messages::NotAsWritten(file.Path()));
    }
  };
  platform::AtomicFile out(file.Path(), {.read = file.Identity(),
                                         .check = readBack,
                                         .recorder = options.recorder,
                                         .kept = edited.Kept(),
                                         .stateDirectory = options.stateDirectory,
                                         .fileSystem = options.fileSystem});
  Copy(edited, out, file.Path());
  out.Commit();
  return true;
}

bool EditFile(const std::string& path, const std::function<void(EditedFile&)>& edit,
              const platform::EditOptions& options, const EditCheck& check) {
  const platform::ReadableFile file(path, *options.fileSystem);
  const FileSource source(file);
  EditedFile edited(source);
  edit(edited);
  return ApplyEdit(file, edited, options, check);
}

}  // namespace ml::metadata
