#include "cli/run_state.h"

#include <algorithm>

#include "cli/output.h"

namespace ml::cli {

bool RunState::Told(std::string_view key) const {
  return std::ranges::any_of(overrides, [&](std::string_view assignment) {
    return assignment.starts_with(key) && assignment.substr(key.size()).starts_with('=');
  });
}

void RunState::Fail(std::string_view sentence) {
  failed = true;
  Complain(sentence);
}

}  // namespace ml::cli
