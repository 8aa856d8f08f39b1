#pragma once

#include <memory>
#include <string>

#include "cli/run_state.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/edits/iptc_edits.h"
#include "platform/edit_batch.h"
#include "platform/user_journal.h"

namespace ml::cli {

/// What a command that changes image files works with: the journal, from which its edits can be undone as one, and
/// what the settings say.
class EditSession {
 public:
  /// `what` names the command in the journal. For a dry run the tools do all but write.
  EditSession(std::string what, const RunState& state, imagefiles::WriteMode mode = imagefiles::WriteMode::Write);
  EditSession(const EditSession&) = delete;
  EditSession& operator=(const EditSession&) = delete;
  /// At the end, when no handler of a file is left that could put times back: makes the notes lasting, and complains
  /// if something cannot be undone.
  void Finish();

  const imagefiles::EditTools& Tools() const { return tools_; }
  bool DryRun() const { return tools_.edit.insteadOfWriting != nullptr; }
  /// Of the journal; for file operations.
  platform::EditBatch& Batch() { return batch_; }
  platform::Trash& Bin() { return journal_.Bin(); }
  /// How many changes the tools have made, or would have made, until now.
  int Changes() const { return recorder_.changes; }

 private:
  /// Counts what it passes on.
  class Recorder final : public platform::EditRecorder {
   public:
    explicit Recorder(platform::EditBatch& batch) : batch_(batch) {}
    void WillReplaceRange(const platform::RangeEdit& edit) override;
    void WillReplaceFile(const platform::FileEdit& edit) override;
    void WillCreateFile(const platform::FileEdit& edit) override;
    void WillChangeStatus(const std::string& path) override;

    int changes = 0;

   private:
    platform::EditBatch& batch_;
  };

  platform::UserJournal journal_;
  platform::EditBatch batch_;
  Recorder recorder_{batch_};
  imagefiles::ImageFileOptions options_;
  imagefiles::CompanionFinder companions_;
  imagefiles::EditTools tools_;
};

/// The handler of an image. Throws UserError if it is none or cannot be read.
std::unique_ptr<imagefiles::ImageFile> OpenImage(const std::string& path, const EditSession& session);

}  // namespace ml::cli
