#include "cli/run_state.h"

#include "cli/output.h"

namespace ml::cli {

void RunState::Fail(std::string_view sentence) {
  failed = true;
  Complain(sentence);
}

}  // namespace ml::cli
