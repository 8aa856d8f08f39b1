#include "cli/run_state.h"

#include "cli/output.h"
#include "platform/errors.h"

namespace ml::cli {

void RunState::Fail(std::string_view sentence) {
  failed = true;
  Complain(sentence);
}

void RunState::CheckCancelled() const {
  if (stop.stop_requested()) throw platform::Cancelled();
}

}  // namespace ml::cli
