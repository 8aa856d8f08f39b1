#pragma once

#include <memory>
#include <string>

#include "cli/run_state.h"
#include "imagefiles/edits/image_edits.h"
#include "platform/edit_batch.h"
#include "platform/trash.h"

namespace ml::cli {

/// What a command that changes image files works with: the journal, from which its edits can be undone as one, and
/// what the settings say.
class EditSession {
 public:
  /// `what` names the command in the journal.
  EditSession(std::string what, const RunState& state);
  /// At the end, when no handler of a file is left that could put times back: makes the notes lasting, and complains
  /// if something cannot be undone.
  void Finish();
  const imagefiles::EditTools& Tools() const { return tools_; }

 private:
  platform::SystemClock clock_;
  std::unique_ptr<platform::Trash> trash_ = platform::MakeSystemTrash();
  platform::EditJournal journal_{{.trash = *trash_, .clock = clock_}};
  platform::EditBatch batch_;
  imagefiles::ImageFileOptions options_;
  imagefiles::CompanionFinder companions_;
  imagefiles::EditTools tools_;
};

}  // namespace ml::cli
