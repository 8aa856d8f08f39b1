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
    : batch_(journal_.Edits(), std::move(what)),
      options_(options::ImageFileOptionsOf(state.settings)),
      companions_(options_),
      tools_{options_, companions_, {.recorder = &recorder_}} {
  if (mode == WriteMode::Write) return;
  options_.liftProtection = false;
  tools_.edit.insteadOfWriting = [this](const std::string&) { ++recorder_.changes; };
}

void EditSession::Finish() {
  batch_.Commit();
  if (batch_.Failure()) {
    Complain("some changes cannot be undone: " + *batch_.Failure());
  } else if (!batch_.Undoable()) {
    Complain("some changes cannot be undone");
  }
}

void EditSession::Recorder::WillReplaceRange(const platform::RangeEdit& edit) {
  ++changes;
  batch_.WillReplaceRange(edit);
}

void EditSession::Recorder::WillReplaceFile(const platform::FileEdit& edit) {
  ++changes;
  batch_.WillReplaceFile(edit);
}

void EditSession::Recorder::WillCreateFile(const platform::FileEdit& edit) {
  ++changes;
  batch_.WillCreateFile(edit);
}

void EditSession::Recorder::WillChangeStatus(const std::string& path) {
  ++changes;
  batch_.WillChangeStatus(path);
}

std::unique_ptr<imagefiles::ImageFile> OpenImage(const std::string& path, const EditSession& session) {
  const platform::ReadableFile readable(path);  // the handler is silent about a file it may not open
  auto file = imagefiles::CreateImageFile(path, session.Tools().options);
  if (!file) throw platform::UserError(imagefiles::messages::NoSuchImage(path));
  return file;
}

}  // namespace ml::cli
