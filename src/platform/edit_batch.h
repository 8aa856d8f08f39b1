#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/edit_journal.h"
#include "platform/edit_recorder.h"
#include "platform/edit_step.h"
#include "platform/open_file.h"

namespace ml::platform {

/// Most bytes of replaced files that one batch keeps, stretches that the new files repeat not counted; what goes beyond
/// is noted as not undoable.
inline constexpr std::uint64_t kMaxUndoBytes = std::uint64_t{64} << 20;

/// A step of a plan of renamings, worked out before its first step is done.
struct PlannedMove {
  std::string from;
  std::string to;   ///< empty: to the trash
  std::string now;  ///< where the file lies as long as no step of the plan is done
};

/// One command's edits. Told of each right before it happens; makes its notes lasting once, in Commit().
/// Recording never throws and never stands in the way: Failure() tells what went wrong. A batch without
/// edits leaves no trace. Not for several threads.
class EditBatch final : public EditRecorder {
 public:
  EditBatch(EditJournal& journal, std::string what);
  EditBatch(const EditBatch&) = delete;
  EditBatch& operator=(const EditBatch&) = delete;
  /// Commits, if nobody did: edits made before a failure can be undone too.
  ~EditBatch() override;

  void WillReplaceRange(const RangeEdit& edit) override;
  void WillReplaceFile(const FileEdit& edit) override;
  void WillCreateFile(const FileEdit& edit) override;
  void WillChangeStatus(const std::string& path) override;
  /// The file itself, or a link itself.
  void WillRename(const std::string& from, const std::string& to);
  void WillTrash(const std::string& path);
  /// A place among the steps noted.
  struct Mark {
    std::size_t steps = 0;
    std::uint64_t logSize = 0;
  };
  /// A whole plan, noted lastingly at once: it can be undone however few of its steps come to pass. Gives the place
  /// before it.
  Mark WillMoveAll(const std::vector<PlannedMove>& moves);
  /// What was noted behind `mark` never happened, or was taken back.
  void Forget(const Mark& mark);
  /// An edit that nothing can take back, such as a deletion for good.
  void WillLose(const std::string& path, const std::string& reason);

  /// Call when everything is done, times and permissions put back included.
  void Commit();
  /// Why edits since then are not in the journal; nothing if all are.
  const std::optional<std::string>& Failure() const noexcept { return failure_; }
  /// Whether every edit so far can be undone.
  bool Undoable() const noexcept { return !failure_ && !lost_; }

 private:
  void Start();
  void Record(EditKind kind, const std::string& path, const std::function<void(EditStep&)>& complete);
  void OpenStore();
  void KeepOldContent(EditStep& step);
  void Fail(const std::exception& error);
  void Append(const std::string& lines);
  EditStep StepOf(EditKind kind, const std::string& path, const std::string& now) const;
  std::string AfterLines() const;

  const JournalHost host_;
  std::string what_;
  std::optional<OpenFile> log_;
  std::optional<OpenFile> store_;
  std::uint64_t logSize_ = 0, storeSize_ = 0;
  std::vector<EditStep> steps_;
  std::optional<std::string> failure_;
  bool lost_ = false;
};

}  // namespace ml::platform
