#include "platform/undo.h"

#include <fcntl.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/in_place_patch.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace ml::platform {

namespace {

constexpr std::uint64_t kChunk = std::uint64_t{1} << 20;

std::uint64_t HashRange(const OpenFile& file, std::uint64_t begin, std::uint64_t length) {
  std::vector<std::byte> buffer(static_cast<std::size_t>(std::min(kChunk, length)));
  ContentHash hash;
  while (length > 0) {
    const auto chunk = std::span(buffer).first(static_cast<std::size_t>(std::min(kChunk, length)));
    const auto got = file.Read(begin, chunk);
    if (got == 0) break;
    hash.Add(chunk.first(got));
    begin += got;
    length -= got;
  }
  return hash.Value();
}

std::vector<std::byte> ToBytes(const std::string& text) {
  const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
  return {bytes.begin(), bytes.end()};
}

/// First looks at every step, in the order of undoing, as if the steps looked at before were taken back
/// already; only when all are found in order the second pass acts.
class Undoer {
 public:
  explicit Undoer(const UndoContext& context) : context_(context), fileSystem_(context.fileSystem) {}

  void Run(const EditLog& log) {
    std::vector<const EditStep*> due;
    for (auto step = log.steps.rbegin(); step != log.steps.rend(); ++step) {
      if (step->kind != EditKind::Lost && IsInForce(*step)) due.push_back(&*step);
    }
    for (const auto* step : due) Revert(*step);
  }

 private:
  [[noreturn]] static void Refuse(const std::string& path) { throw UserError(messages::kChangedSince + path); }

  std::optional<FileStamp> Stamp(const std::string& path, Links links) const {
    struct stat status {};
    if (fileSystem_.Stat(path, links, status) == 0) return StampOf(status);
    if (errno != ENOENT && errno != ENOTDIR) ThrowFileError(messages::kUnableToRead, path, errno);
    return std::nullopt;
  }

  /// Where the file lies now that bears `path` once the steps looked at so far are taken back.
  std::optional<std::string> Locate(const std::string& path) const {
    if (const auto found = places_.find(path); found != places_.end()) return found->second;
    return Stamp(path, Links::Keep) ? std::optional(path) : std::nullopt;
  }

  /// Whether the file still is what the batch made of it. A file whose latest edit of this batch was found in
  /// order is not asked again: its stamp is that edit's business.
  bool IsUntouched(const EditStep& step, const std::string& place, const FileStamp& now, bool otherwise) const {
    if (inOrder_.contains(place)) return true;
    return step.after ? step.after->SameContent(now) : otherwise;
  }

  bool IsInForce(const EditStep& step) {
    switch (step.kind) {
      case EditKind::Range:
        return RangeInForce(step);
      case EditKind::File:
        return FileInForce(step);
      case EditKind::Rename:
        return RenameInForce(step);
      case EditKind::Create:
        return CreateInForce(step);
      case EditKind::Trash:
        return TrashInForce(step);
      case EditKind::Status:
        return StatusInForce(step);
      case EditKind::Lost:
        break;
    }
    return false;
  }

  bool RangeInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (!place) Refuse(step.path);
    if (inOrder_.contains(*place)) return true;
    const ReadableFile file(*place, fileSystem_);
    const auto bytes = file.Range(step.offset, step.oldBytes.size());
    const bool isOld = bytes == ToBytes(step.oldBytes);
    if (isOld && file.Size() == step.oldSize) return false;
    const bool untouched = IsUntouched(step, *place, *Stamp(*place, Links::Follow), true);
    const bool hasTail = file.Size() == step.newSize && TailHash(*place, step) == step.newHash;
    if (!hasTail || !(isOld || (untouched && bytes == ToBytes(step.newBytes)))) Refuse(step.path);
    inOrder_.insert(*place);
    return true;
  }

  std::uint64_t TailHash(const std::string& place, const EditStep& step) const {
    const auto file = OpenRegular(fileSystem_, place, O_RDONLY);
    return HashRange(file, step.oldSize, step.newSize - step.oldSize);
  }

  bool FileInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (!place) Refuse(step.path);
    if (!inOrder_.contains(*place)) {
      const auto file = OpenRegular(fileSystem_, *place, O_RDONLY);
      const auto size = file.Size();
      const auto hash = HashRange(file, 0, size);
      if (size == step.oldSize && hash == step.oldHash) return false;
      if (size != step.newSize || hash != step.newHash) Refuse(step.path);
      inOrder_.insert(*place);
    }
    if (!HasOldContent(step)) throw UserError(messages::kOldContentLost + step.path);
    return true;
  }

  bool HasOldContent(const EditStep& step) const {
    const auto store = OpenIfReadable(context_.storePath, fileSystem_);
    if (!store) return step.oldSize == 0 && step.oldHash == ContentHash().Value();
    const auto file = OpenRegular(fileSystem_, context_.storePath, O_RDONLY);
    return HashRange(file, step.offset, step.oldSize) == step.oldHash;
  }

  bool RenameInForce(const EditStep& step) {
    const auto from = Locate(step.path);
    const auto to = Locate(step.other);
    const bool sameFile = from && to && SameFile(*from, *to);  // names that differ in case, where case is ignored
    if (to && (!from || sameFile)) {
      const auto now = Stamp(*to, Links::Keep);
      if (!now || !IsUntouched(step, *to, *now, now->SameContent(step.before))) Refuse(step.other);
      places_[step.path] = to;
      places_[step.other] = std::nullopt;
      return true;
    }
    if (!from || !Stamp(*from, Links::Keep)->SameContent(step.before)) Refuse(step.other);
    return false;
  }

  bool CreateInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (!place) return false;
    const auto now = Stamp(*place, Links::Keep);
    const bool sameContent = !step.after && now && now->size == step.newSize && HasNewContent(step, *place);
    if (!now || !IsUntouched(step, *place, *now, sameContent)) Refuse(step.path);
    places_[step.path] = std::nullopt;
    return true;
  }

  bool HasNewContent(const EditStep& step, const std::string& place) const {
    const auto file = OpenRegular(fileSystem_, place, O_RDONLY);
    return HashRange(file, 0, step.newSize) == step.newHash;
  }

  std::optional<TrashedFile> InTrash(const EditStep& step) const {
    for (auto& file : context_.trash.Find(step.path)) {
      const auto stamp = Stamp(file.file, Links::Keep);
      if (stamp && stamp->SameContent(step.before)) return file;
    }
    return std::nullopt;
  }

  bool TrashInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (place) {
      if (!Stamp(*place, Links::Keep)->SameContent(step.before)) Refuse(step.path);
      return false;
    }
    const auto trashed = InTrash(step);
    if (!trashed) Refuse(step.path);
    places_[step.path] = trashed->file;
    return true;
  }

  bool StatusInForce(const EditStep& step) const {
    const auto place = Locate(step.path);
    if (!place) Refuse(step.path);
    const auto now = Stamp(*place, Links::Follow);
    if (!now) Refuse(step.path);
    if (*now == step.before) return false;
    const bool asLeft = step.after ? *now == *step.after : now->size == step.before.size;
    if (!asLeft && !inOrder_.contains(*place)) Refuse(step.path);
    return true;
  }

  void Revert(const EditStep& step) {
    switch (step.kind) {
      case EditKind::Range:
        return RevertRange(step);
      case EditKind::File:
        return RevertFile(step);
      case EditKind::Rename:
        return MoveBack(step.other, step.path);
      case EditKind::Create:
        return context_.trash.Put(step.path);
      case EditKind::Trash:
        return RevertTrash(step);
      case EditKind::Status:
        return Restore(step.path, {.modified = step.before.modified, .mode = step.before.mode});
      case EditKind::Lost:
        break;
    }
  }

  /// Makes the file writable; gives what its status is to be afterwards: the old time, but the permissions of
  /// now, because an edit notes them while they are lifted.
  FileStatus LiftReadOnly(const EditStep& step) const {
    const auto now = ReadFileStatus(step.path, fileSystem_);
    if (!now || !MakeWritable(step.path, fileSystem_)) throw UserError(messages::kReadOnly + step.path);
    return {.modified = step.before.modified, .mode = now->mode};
  }

  void Restore(const std::string& path, const FileStatus& status) const {
    RestoreFileStatus(path, status, ModificationTimePolicy::Restore, fileSystem_);
  }

  void RevertRange(const EditStep& step) const {
    const auto status = LiftReadOnly(step);
    const ReadableFile file(step.path, fileSystem_);
    if (const auto now = file.Range(step.offset, step.oldBytes.size()); now != ToBytes(step.oldBytes)) {
      ApplyPatches(step.path,
                   {.fileSize = step.newSize,
                    .patches = {{.offset = step.offset,
                                 .oldBytes = ToBytes(step.newBytes),
                                 .newBytes = ToBytes(step.oldBytes)}}},
                   {.stateDirectory = context_.stateDirectory, .fileSystem = &fileSystem_});
    }
    if (step.newSize != step.oldSize) {
      auto target = OpenRegular(fileSystem_, step.path, O_RDWR);
      target.Truncate(step.oldSize);
      target.Sync();
    }
    Restore(step.path, status);
  }

  AtomicFileOptions Writing(const FileStamp& before) const {
    return {.modificationTime = before.modified, .stateDirectory = context_.stateDirectory, .fileSystem = &fileSystem_};
  }

  void Copy(const std::string& from, std::uint64_t begin, std::uint64_t length, AtomicFile& to) const {
    const auto source = OpenRegular(fileSystem_, from, O_RDONLY);
    for (const auto end = begin + length; begin < end;) {
      std::vector<std::byte> chunk(static_cast<std::size_t>(std::min(kChunk, end - begin)));
      if (source.Read(begin, chunk) != chunk.size()) ThrowFileError(messages::kUnableToRead, from, EIO);
      to.Write(chunk);
      begin += chunk.size();
    }
  }

  void RevertFile(const EditStep& step) const {
    const auto status = LiftReadOnly(step);
    AtomicFile file(step.path, Writing(step.before));
    if (step.oldSize > 0) Copy(context_.storePath, step.offset, step.oldSize, file);
    file.Commit();
    Restore(step.path, status);
  }

  /// Back under the old name, never over a file that stands there.
  void MoveBack(const std::string& from, const std::string& to) const {
    const bool sameFile = Stamp(to, Links::Keep) && SameFile(from, to);
    const int result = sameFile ? fileSystem_.Rename(from, to) : fileSystem_.RenameNoReplace(from, to);
    if (result == 0) return OpenDirectory(fileSystem_, to).Sync();
    if (errno != EXDEV) ThrowFileError(messages::kUnableToRename, from, errno);
    const auto stamp = Stamp(from, Links::Follow);
    if (!stamp) Refuse(from);
    auto options = Writing(*stamp);
    options.existing = ExistingFile::Refuse;
    AtomicFile file(to, options);
    Copy(from, 0, stamp->size, file);
    file.Commit();
    Restore(to, {.modified = stamp->modified, .mode = stamp->mode});
    if (fileSystem_.Unlink(from) != 0) ThrowFileError(messages::kUnableToRemove, from, errno);
  }

  void RevertTrash(const EditStep& step) const {
    const auto trashed = InTrash(step);
    if (!trashed) Refuse(step.path);
    MoveBack(trashed->file, step.path);
    if (!trashed->info.empty() && fileSystem_.Unlink(trashed->info) != 0) {
      ThrowFileError(messages::kUnableToRemove, trashed->info, errno);
    }
  }

  const UndoContext& context_;
  FileSystem& fileSystem_;
  std::map<std::string, std::optional<std::string>> places_;
  std::set<std::string> inOrder_;
};

}  // namespace

void UndoSteps(const EditLog& log, const UndoContext& context) { Undoer(context).Run(log); }

}  // namespace ml::platform
