#include "platform/edit_batch.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/journal_files.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::platform {

EditBatch::EditBatch(EditJournal& journal, std::string what) : host_(journal.Host()), what_(std::move(what)) {}

EditBatch::~EditBatch() { Commit(); }

/// The first failure is the cause of those behind it.
void EditBatch::Fail(const std::exception& error) {
  if (!failure_) failure_ = error.what();
}

void EditBatch::Append(const std::string& lines) {
  log_->Write(logSize_, AsBytes(lines));
  logSize_ += lines.size();
}

void EditBatch::Start() {
  if (log_) return;
  log_.emplace(CreateLog(host_.fileSystem, JournalDirectory(host_.stateDirectory)));
  Append(HeadLine(what_, host_.clock.now()));
}

/// `now`: where the file lies. Throws UserError if it cannot be looked at.
EditStep EditBatch::StepOf(EditKind kind, const std::string& path, const std::string& now) const {
  EditStep step{.kind = kind, .path = AbsolutePath(path)};
  if (kind == EditKind::Create) return step;
  const bool ofLink = kind == EditKind::Rename || kind == EditKind::Trash || kind == EditKind::Lost;
  const auto stamp = StampOfPath(host_.fileSystem, AbsolutePath(now), ofLink ? Links::Keep : Links::Follow);
  if (!stamp) ThrowFileError(messages::kUnableToRead, step.path, ENOENT);
  step.before = *stamp;
  return step;
}

/// Adds one step. After a failure nothing more is noted: with a gap in it the rest could mislead an undo.
void EditBatch::Record(EditKind kind, const std::string& path, const std::function<void(EditStep&)>& complete) {
  if (failure_) return;
  try {
    Start();
    auto step = StepOf(kind, path, path);
    complete(step);
    Append(StepLine(step));
    lost_ = lost_ || step.kind == EditKind::Lost;
    steps_.push_back(std::move(step));
  } catch (const std::exception& error) {
    Fail(error);
  }
}

void EditBatch::WillReplaceRange(const RangeEdit& edit) {
  Record(EditKind::Range, edit.path, [&](EditStep& step) {
    step.oldBytes = AsText(edit.oldBytes);
    step.newBytes = AsText(edit.newBytes);
    step.offset = edit.offset;
    step.oldSize = edit.oldSize;
    step.newSize = edit.newSize;
    step.newHash = edit.appendedHash;
  });
}

void EditBatch::OpenStore() {
  if (store_) return;
  const auto path = StorePathOf(log_->Label());
  const int fd = host_.fileSystem.Open(path, O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
  if (fd < 0) ThrowFileError(messages::kUnableToWrite, path, errno);
  store_.emplace(host_.fileSystem, fd, path);
}

/// Puts into the store what is between the kept stretches.
void EditBatch::KeepOldContent(EditStep& step) {
  if (step.StoredSize() > 0) OpenStore();
  const auto file = OpenRegular(host_.fileSystem, step.path, O_RDONLY);
  ContentHash all, stored;
  std::uint64_t at = 0;
  step.offset = storeSize_;
  const auto store = [&](std::span<std::byte> piece) {
    store_->Write(storeSize_, piece);
    storeSize_ += piece.size();
    stored.Add(piece);
    all.Add(piece);
  };
  for (const auto& kept : step.kept) {
    ReadInPieces(file, at, kept.oldOffset - at, store);
    ReadInPieces(file, kept.oldOffset, kept.size, [&](auto piece) { all.Add(piece); });
    at = kept.oldOffset + kept.size;
  }
  ReadInPieces(file, at, step.oldSize - at, store);
  step.oldHash = all.Value();
  step.storedHash = stored.Value();
}

void EditBatch::WillReplaceFile(const FileEdit& edit) {
  Record(EditKind::File, edit.path, [&](EditStep& step) {
    step.newSize = edit.newSize;
    step.newHash = edit.newHash;
    step.oldSize = step.before.size;
    // Not where the file became shorter meanwhile: it will not be replaced then, and the note must stay readable.
    const bool isWhole = edit.kept.empty() || edit.kept.back().oldOffset + edit.kept.back().size <= step.oldSize;
    if (isWhole) step.kept.assign(edit.kept.begin(), edit.kept.end());
    if (step.StoredSize() <= kMaxUndoBytes - std::min(kMaxUndoBytes, storeSize_)) return KeepOldContent(step);
    step.kept.clear();
    step.kind = EditKind::Lost;
    step.other = messages::kUndoTooLarge;
  });
}

void EditBatch::WillCreateFile(const FileEdit& edit) {
  Record(EditKind::Create, edit.path, [&](EditStep& step) {
    step.newSize = edit.newSize;
    step.newHash = edit.newHash;
  });
}

void EditBatch::WillRename(const std::string& from, const std::string& to) {
  Record(EditKind::Rename, from, [&](EditStep& step) { step.other = AbsolutePath(to); });
}

void EditBatch::WillTrash(const std::string& path) {
  Record(EditKind::Trash, path, [](EditStep&) {});
}

EditBatch::Mark EditBatch::WillMoveAll(const std::vector<PlannedMove>& moves) {
  const Mark before{steps_.size(), logSize_};
  if (failure_ || moves.empty()) return before;
  try {
    Start();
    std::string lines;
    for (const auto& move : moves) {
      auto step = StepOf(move.to.empty() ? EditKind::Trash : EditKind::Rename, move.from, move.now);
      if (!move.to.empty()) {
        struct stat status {};
        if (host_.fileSystem.Stat(move.now, Links::Keep, status) == 0) step.inode = status.st_ino;
        step.other = AbsolutePath(move.to);
      }
      lines += StepLine(step);
      steps_.push_back(std::move(step));
    }
    Append(lines);
    log_->Sync();
    OpenDirectory(host_.fileSystem, log_->Label()).Sync();
  } catch (const std::exception& error) {
    Fail(error);
    Forget(before);
  }
  return before;
}

void EditBatch::Forget(const Mark& mark) {
  if (!log_) return;
  try {
    steps_.resize(std::min(mark.steps, steps_.size()));
    if (steps_.empty()) {
      const auto path = log_->Label();
      log_.reset();
      logSize_ = 0;
      RemoveFile(host_.fileSystem, path);
    } else {
      log_->Truncate(mark.logSize);
      logSize_ = mark.logSize;
    }
  } catch (const std::exception& error) {
    Fail(error);
  }
}

void EditBatch::WillChangeStatus(const std::string& path) {
  Record(EditKind::Status, path, [](EditStep&) {});
}

void EditBatch::WillLose(const std::string& path, const std::string& reason) {
  Record(EditKind::Lost, path, [&](EditStep& step) { step.other = reason; });
}

/// How the steps left their files. A file that a later step moved on is that step's business: another one may bear
/// its name by now.
std::string EditBatch::AfterLines() const {
  std::string lines;
  std::set<std::string> movedOn;
  for (auto i = steps_.size(); i-- > 0;) {
    const auto& step = steps_[i];
    const bool moved = step.kind == EditKind::Rename || step.kind == EditKind::Trash;
    const auto links = step.kind == EditKind::Rename || step.kind == EditKind::Create ? Links::Keep : Links::Follow;
    const bool last = step.kind != EditKind::Rename || !movedOn.contains(step.other);
    const auto stamp = last ? StampOfPath(host_.fileSystem, step.PathAfter(), links) : std::nullopt;
    if (stamp) lines += AfterLine(i, *stamp);
    if (moved) movedOn.insert(step.path);
  }
  return lines;
}

void EditBatch::Commit() {
  if (!log_) return;
  try {
    Append(AfterLines());
    if (store_) store_->Sync();
    log_->Sync();
    OpenDirectory(host_.fileSystem, log_->Label()).Sync();
  } catch (const std::exception& error) {
    Fail(error);
  }
  log_.reset();
  store_.reset();
  logSize_ = storeSize_ = 0;
  steps_.clear();
  try {
    PruneJournal(host_.fileSystem, JournalDirectory(host_.stateDirectory));
  } catch (const std::exception& error) {
    Fail(error);
  }
}

}  // namespace ml::platform
