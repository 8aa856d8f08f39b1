#pragma once

#include <mutex>

#include "platform/edit_recorder.h"

namespace ml::platform {

/// Passes on what several threads tell, one at a time. Owns nothing; null takes nothing.
class LockedRecorder final : public EditRecorder {
 public:
  explicit LockedRecorder(EditRecorder* recorder) : recorder_(recorder) {}
  void WillReplaceRange(const RangeEdit& edit) override { Tell(&EditRecorder::WillReplaceRange, edit); }
  void WillReplaceFile(const FileEdit& edit) override { Tell(&EditRecorder::WillReplaceFile, edit); }
  void WillCreateFile(const FileEdit& edit) override { Tell(&EditRecorder::WillCreateFile, edit); }
  void WillChangeStatus(const std::string& path) override { Tell(&EditRecorder::WillChangeStatus, path); }

 private:
  template <class Edit>
  void Tell(void (EditRecorder::*what)(const Edit&), const Edit& edit) {
    if (recorder_ == nullptr) return;
    const std::lock_guard guard(lock_);
    (recorder_->*what)(edit);
  }

  EditRecorder* recorder_;
  std::mutex lock_;
};

}  // namespace ml::platform
