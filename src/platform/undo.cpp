#include "platform/undo.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/revert_step.h"

namespace ml::platform {

namespace {

/// First looks at every step, in the order of undoing, as if the steps looked at before were taken back
/// already; only when all are found in order the second pass acts.
class Undoer {
 public:
  explicit Undoer(const UndoContext& context) : context_(context), fileSystem_(context.fileSystem) {}

  void Run(const EditLog& log) {
    undoing_ = log.undoing;
    LearnPlan(log);
    std::vector<std::size_t> due;
    for (auto i = log.steps.size(); i-- > 0;) {
      const auto& step = log.steps[i];
      if (step.kind != EditKind::Lost && !step.undone && IsInForce(step)) due.push_back(i);
    }
    context_.begin();
    std::map<std::string, std::string> changed;  // a path in each directory
    for (const auto i : due) {
      const auto& step = log.steps[i];
      RevertStep(step, context_);
      if (!IsPlanned(step)) {
        context_.undone(i);
      } else {  // needs no note, and therefore not to be lasting before the next one
        changed.emplace(DirectoryOf(step.path), step.path);
      }
    }
    for (const auto& [directory, path] : changed) OpenDirectory(fileSystem_, path).Sync();
  }

 private:
  using FileId = std::pair<dev_t, ino_t>;

  std::optional<FileStamp> Stamp(const std::string& path, Links links) const {
    return StampOfPath(fileSystem_, path, links);
  }

  /// Where the file lies now that bears `path` once the steps looked at so far are taken back.
  std::optional<std::string> Locate(const std::string& path) const {
    if (const auto found = places_.find(path); found != places_.end()) return found->second;
    return Stamp(path, Links::Keep) ? std::optional(path) : std::nullopt;
  }

  /// Nothing for a link that leads nowhere.
  std::optional<FileId> IdOf(const std::string& place) const {
    struct stat status {};
    if (fileSystem_.Stat(place, Links::Follow, status) != 0) return std::nullopt;
    return FileId{status.st_dev, status.st_ino};
  }

  bool IsInOrder(const std::string& place) const {
    const auto id = IdOf(place);
    return id && inOrder_.contains(*id);
  }

  void PutInOrder(const std::string& place) {
    if (const auto id = IdOf(place)) inOrder_.insert(*id);
  }

  /// Whether the file still is what the batch made of it. A file whose latest edit of this batch was found in
  /// order is not asked again: its stamp is that edit's business.
  bool IsUntouched(const EditStep& step, const std::string& place, const FileStamp& now, bool otherwise) const {
    if (IsInOrder(place)) return true;
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
    if (!place) RefuseChanged(step.path);
    if (IsInOrder(*place)) return true;
    const ReadableFile file(*place, fileSystem_);
    const auto bytes = file.Range(step.offset, step.oldBytes.size());
    const bool isOld = bytes == OldBytes(step);
    if (isOld && file.Size() == step.oldSize) return undoing_;
    const bool untouched = IsUntouched(step, *place, *Stamp(*place, Links::Follow), true);
    const bool hasTail = file.Size() == step.newSize && TailHash(*place, step) == step.newHash;
    if (!hasTail || !(isOld || (untouched && IsNewBytes(step, bytes)))) RefuseChanged(step.path);
    PutInOrder(*place);
    return true;
  }

  std::uint64_t TailHash(const std::string& place, const EditStep& step) const {
    const auto file = OpenRegular(fileSystem_, place, O_RDONLY);
    return HashRange(file, step.oldSize, step.newSize - step.oldSize);
  }

  bool FileInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (!place) RefuseChanged(step.path);
    if (!IsInOrder(*place)) {
      const auto file = OpenRegular(fileSystem_, *place, O_RDONLY);
      const auto size = file.Size();
      const auto hash = HashRange(file, 0, size);
      const bool isOld = size == step.oldSize && hash == step.oldHash;
      if (isOld && !undoing_) return false;
      if (!isOld && (size != step.newSize || hash != step.newHash)) RefuseChanged(step.path);
      PutInOrder(*place);
    }
    if (!HasOldContent(step)) throw UserError(messages::kOldContentLost + step.path);
    return true;
  }

  bool HasOldContent(const EditStep& step) const {
    const auto store = OpenIfReadable(context_.storePath, fileSystem_);
    if (!store) return step.StoredSize() == 0 && step.storedHash == ContentHash().Value();
    const auto file = OpenRegular(fileSystem_, context_.storePath, O_RDONLY);
    return HashRange(file, step.offset, step.StoredSize()) == step.storedHash;
  }

  /// What is done in a directory changes it, but not what it is called.
  bool IsDirectory(const std::string& path) const {
    struct stat status {};
    return fileSystem_.Stat(path, Links::Keep, status) == 0 && S_ISDIR(status.st_mode);
  }

  static bool IsPlanned(const EditStep& step) { return step.kind == EditKind::Rename && step.inode != 0; }

  std::optional<std::uint64_t> Inode(const std::string& path) const {
    struct stat status {};
    if (fileSystem_.Stat(path, Links::Keep, status) == 0) return status.st_ino;
    if (errno != ENOENT) ThrowFileError(messages::kUnableToRead, path, errno);
    return std::nullopt;
  }

  /// Of a plan any number of steps may have come to pass, so that other files of it may bear a step's names.
  void LearnPlan(const EditLog& log) {
    for (const auto& step : log.steps) {
      if (!IsPlanned(step)) continue;
      arrivals_.insert(step.other);
      for (const auto* path : {&step.path, &step.other}) {
        if (const auto inode = Inode(*path)) inodes_.insert(*inode);
      }
    }
  }

  /// Whether the file at `place` is that of the planned step; by its stamp if later edits gave it a new inode.
  bool IsFileOf(const EditStep& step, const std::optional<std::string>& place) const {
    if (!place) return false;
    if (inodes_.contains(step.inode)) return Inode(*place) == step.inode;
    const auto now = Stamp(*place, Links::Keep);
    return now && now->SameContent(step.after.value_or(step.before));
  }

  bool RenameInForce(const EditStep& step) {
    auto from = Locate(step.path);
    auto to = Locate(step.other);
    if (IsPlanned(step)) {
      if (!IsFileOf(step, from)) from = std::nullopt;
      if (!IsFileOf(step, to)) to = std::nullopt;
      if (!from && !to && arrivals_.contains(step.path)) return false;  // it has not come so far
    }
    const bool sameFile = from && to && SameFile(*from, *to);  // names that differ in case, where case is ignored
    if (to && (!from || sameFile)) {
      const auto now = Stamp(*to, Links::Keep);
      if (!now) RefuseChanged(step.other);
      if (!IsDirectory(*to) && !IsUntouched(step, *to, *now, now->SameContent(step.before))) RefuseChanged(step.other);
      places_[step.path] = to;
      places_[step.other] = std::nullopt;
      return true;
    }
    if (!from) RefuseChanged(step.other);
    if (!IsDirectory(*from) && !Stamp(*from, Links::Keep)->SameContent(step.before)) RefuseChanged(step.other);
    return false;
  }

  bool CreateInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (!place) return false;
    const auto now = Stamp(*place, Links::Keep);
    const bool sameContent = !step.after && now && now->size == step.newSize && HasNewContent(step, *place);
    if (!now || !IsUntouched(step, *place, *now, sameContent)) RefuseChanged(step.path);
    places_[step.path] = std::nullopt;
    return true;
  }

  bool HasNewContent(const EditStep& step, const std::string& place) const {
    const auto file = OpenRegular(fileSystem_, place, O_RDONLY);
    return HashRange(file, 0, step.newSize) == step.newHash;
  }

  bool TrashInForce(const EditStep& step) {
    const auto place = Locate(step.path);
    if (place) {
      if (!Stamp(*place, Links::Keep)->SameContent(step.before)) RefuseChanged(step.path);
      return false;
    }
    const auto trashed = FindInTrash(step, context_);
    if (!trashed) RefuseChanged(step.path);
    places_[step.path] = trashed->file;
    return true;
  }

  bool StatusInForce(const EditStep& step) const {
    const auto place = Locate(step.path);
    if (!place) RefuseChanged(step.path);
    const auto now = Stamp(*place, Links::Follow);
    if (!now) RefuseChanged(step.path);
    if (*now == step.before) return false;
    const bool asLeft = step.after ? *now == *step.after : now->size == step.before.size;
    if (!asLeft && !IsInOrder(*place)) RefuseChanged(step.path);
    return true;
  }

  const UndoContext& context_;
  FileSystem& fileSystem_;
  std::map<std::string, std::optional<std::string>> places_;
  std::set<FileId> inOrder_;        ///< a file may have several names, and be edited by each of them
  std::set<std::string> arrivals_;  ///< names that planned steps give
  std::set<std::uint64_t> inodes_;  ///< of the files that bear names of planned steps
  bool undoing_ = false;            ///< a file may have its old bytes already, but not yet its old time
};

}  // namespace

void UndoSteps(const EditLog& log, const UndoContext& context) { Undoer(context).Run(log); }

}  // namespace ml::platform
