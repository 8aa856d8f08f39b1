#include "platform/edit_batch.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <span>
#include <string_view>
#include <utility>

#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/journal_files.h"
#include "platform/messages.h"
#include "platform/paths.h"

namespace ml::platform {

namespace {

constexpr std::size_t kCopyChunk = std::size_t{1} << 20;

std::string ToText(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};  // char may alias everything
}

}  // namespace

EditBatch::EditBatch(EditJournal& journal, std::string what) : host_(journal.Host()), what_(std::move(what)) {}

EditBatch::~EditBatch() { Commit(); }

void EditBatch::AppendLine(const std::string& line) {
  log_->Write(logSize_, std::as_bytes(std::span(line.data(), line.size())));
  logSize_ += line.size();
}

void EditBatch::Start() {
  if (log_) return;
  log_.emplace(CreateLog(host_.fileSystem, JournalDirectory(host_.stateDirectory)));
  AppendLine(HeadLine(what_, host_.clock.now()));
}

/// Adds one step. After a failure nothing more is noted: with a gap in it the rest could mislead an undo.
void EditBatch::Record(EditKind kind, const std::string& path, const std::function<void(EditStep&)>& complete) {
  if (failure_) return;
  try {
    Start();
    EditStep step{.kind = kind, .path = AbsolutePath(path)};
    if (kind != EditKind::Create) {
      const bool ofLink = kind == EditKind::Rename || kind == EditKind::Trash || kind == EditKind::Lost;
      const auto stamp = StampOfPath(host_.fileSystem, step.path, ofLink ? Links::Keep : Links::Follow);
      if (!stamp) ThrowFileError(messages::kUnableToRead, step.path, ENOENT);
      step.before = *stamp;
    }
    complete(step);
    AppendLine(StepLine(step));
    lost_ = lost_ || step.kind == EditKind::Lost;
    steps_.push_back(std::move(step));
  } catch (const std::exception& error) {
    failure_ = error.what();
  }
}

void EditBatch::WillReplaceRange(const RangeEdit& edit) {
  Record(EditKind::Range, edit.path, [&](EditStep& step) {
    step.oldBytes = ToText(edit.oldBytes);
    step.newBytes = ToText(edit.newBytes);
    step.offset = edit.offset;
    step.oldSize = edit.oldSize;
    step.newSize = edit.newSize;
    step.newHash = edit.appendedHash;
  });
}

void EditBatch::KeepOldContent(EditStep& step) {
  auto& fileSystem = host_.fileSystem;
  if (!store_) {
    const auto path = StorePathOf(log_->Label());
    const int fd = fileSystem.Open(path, O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (fd < 0) ThrowFileError(messages::kUnableToWrite, path, errno);
    store_.emplace(fileSystem, fd, path);
  }
  const auto file = OpenRegular(fileSystem, step.path, O_RDONLY);
  std::vector<std::byte> buffer(kCopyChunk);
  ContentHash hash;
  std::uint64_t at = 0;
  while (const auto length = file.Read(at, buffer)) {
    const auto chunk = std::span(buffer).first(length);
    store_->Write(storeSize_ + at, chunk);
    hash.Add(chunk);
    at += length;
  }
  step.offset = storeSize_;
  step.oldSize = at;
  step.oldHash = hash.Value();
  storeSize_ += at;
}

void EditBatch::WillReplaceFile(const FileEdit& edit) {
  Record(EditKind::File, edit.path, [&](EditStep& step) {
    step.newSize = edit.newSize;
    step.newHash = edit.newHash;
    if (step.before.size <= kMaxUndoBytes - std::min(kMaxUndoBytes, storeSize_)) return KeepOldContent(step);
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

void EditBatch::WillChangeStatus(const std::string& path) {
  Record(EditKind::Status, path, [](EditStep&) {});
}

void EditBatch::WillLose(const std::string& path, const std::string& reason) {
  Record(EditKind::Lost, path, [&](EditStep& step) { step.other = reason; });
}

void EditBatch::Commit() {
  if (!log_) return;
  try {
    for (std::size_t i = 0; i < steps_.size(); ++i) {
      const auto kind = steps_[i].kind;
      const auto links = kind == EditKind::Rename || kind == EditKind::Create ? Links::Keep : Links::Follow;
      const auto stamp = StampOfPath(host_.fileSystem, steps_[i].PathAfter(), links);
      if (stamp) AppendLine(AfterLine(i, *stamp));
    }
    if (store_) store_->Sync();
    log_->Sync();
    OpenDirectory(host_.fileSystem, log_->Label()).Sync();
  } catch (const std::exception& error) {
    failure_ = failure_ ? failure_ : error.what();
  }
  log_.reset();
  store_.reset();
  logSize_ = storeSize_ = 0;
  steps_.clear();
  try {
    PruneJournal(host_.fileSystem, JournalDirectory(host_.stateDirectory));
  } catch (const std::exception& error) {
    failure_ = failure_ ? failure_ : error.what();
  }
}

}  // namespace ml::platform
