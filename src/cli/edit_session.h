#pragma once

#include <memory>
#include <mutex>
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

  /// For one thread.
  const imagefiles::EditTools& Tools() const { return tools_; }

 private:
  friend class ImageSession;

  const imagefiles::WriteMode mode_;
  platform::UserJournal journal_;
  platform::EditBatch batch_;
  std::mutex lock_;  ///< guards the batch where several images are edited at once
  imagefiles::ImageFileOptions options_;
  imagefiles::CompanionFinder companions_;
  imagefiles::EditTools tools_;
};

/// What one image is edited with, on one thread; several share a session.
class ImageSession {
 public:
  explicit ImageSession(EditSession& session);
  ImageSession(const ImageSession&) = delete;
  ImageSession& operator=(const ImageSession&) = delete;

  const imagefiles::EditTools& Tools() const { return tools_; }
  /// Whether the tools have changed something, or would have in a dry run.
  bool Changed() const { return recorder_.changed; }
  bool DryRun() const { return tools_.edit.insteadOfWriting != nullptr; }
  /// Of the session; for file operations, which run on one thread.
  platform::EditBatch& Batch() { return session_.batch_; }
  platform::Trash& Bin() { return session_.journal_.Bin(); }

 private:
  /// Notes that it passed something on.
  class Recorder final : public platform::EditRecorder {
   public:
    Recorder(platform::EditBatch& batch, std::mutex& lock) : batch_(batch), lock_(lock) {}
    void WillReplaceRange(const platform::RangeEdit& edit) override;
    void WillReplaceFile(const platform::FileEdit& edit) override;
    void WillCreateFile(const platform::FileEdit& edit) override;
    void WillChangeStatus(const std::string& path) override;

    bool changed = false;

   private:
    platform::EditBatch& batch_;
    std::mutex& lock_;
  };

  EditSession& session_;
  Recorder recorder_;
  imagefiles::EditTools tools_;
};

/// The handler of an image. Throws UserError if it is none or cannot be read.
std::unique_ptr<imagefiles::ImageFile> OpenImage(const std::string& path, const imagefiles::EditTools& tools);

}  // namespace ml::cli
