#include "cli/edit_session.h"

#include <utility>

#include "cli/output.h"
#include "imagefiles/messages.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::cli {

using imagefiles::WriteMode;

EditSession::EditSession(std::string what, const RunState& state, WriteMode mode)
    : mode_(mode),
      batch_(journal_.Edits(), std::move(what)),
      options_(options::ImageFileOptionsOf(state.settings)),
      companions_(options_),
      tools_{options_, companions_, {.recorder = &batch_}} {
  options_.liftProtection = mode == WriteMode::Write;
}

void EditSession::Finish() {
  batch_.Commit();
  if (batch_.Failure()) {
    Complain("some changes cannot be undone: " + *batch_.Failure());
  } else if (!batch_.Undoable()) {
    Complain("some changes cannot be undone");
  }
}

ImageSession::ImageSession(EditSession& session)
    : session_(session),
      recorder_(session.batch_, session.lock_),
      tools_{session.options_, session.companions_, {.recorder = &recorder_}} {
  if (session.mode_ == WriteMode::Write) return;
  tools_.edit.insteadOfWriting = [this](const std::string&) { recorder_.changed = true; };
}

void ImageSession::Recorder::WillReplaceRange(const platform::RangeEdit& edit) {
  const std::lock_guard guard(lock_);
  changed = true;
  batch_.WillReplaceRange(edit);
}

void ImageSession::Recorder::WillReplaceFile(const platform::FileEdit& edit) {
  const std::lock_guard guard(lock_);
  changed = true;
  batch_.WillReplaceFile(edit);
}

void ImageSession::Recorder::WillCreateFile(const platform::FileEdit& edit) {
  const std::lock_guard guard(lock_);
  changed = true;
  batch_.WillCreateFile(edit);
}

void ImageSession::Recorder::WillChangeStatus(const std::string& path) {
  const std::lock_guard guard(lock_);
  changed = true;
  batch_.WillChangeStatus(path);
}

std::unique_ptr<imagefiles::ImageFile> OpenImage(const std::string& path, const imagefiles::EditTools& tools) {
  const platform::ReadableFile readable(path);  // the handler is silent about a file it may not open
  auto file = imagefiles::CreateImageFile(path, tools.options);
  if (!file) throw platform::UserError(imagefiles::messages::NoSuchImage(path));
  return file;
}

}  // namespace ml::cli
