#include "cli/edit_session.h"

#include <utility>

#include "cli/output.h"
#include "options/engine_options.h"

namespace ml::cli {

EditSession::EditSession(std::string what, const RunState& state)
    : batch_(journal_, std::move(what)),
      options_(options::ImageFileOptionsOf(state.settings)),
      companions_(options_),
      tools_{options_, companions_, {.recorder = &batch_}} {}

void EditSession::Finish() {
  batch_.Commit();
  if (batch_.Failure()) Complain("some changes cannot be undone: " + *batch_.Failure());
}

}  // namespace ml::cli
