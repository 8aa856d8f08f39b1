#pragma once

#include "catalogue/renamed_names.h"
#include "cli/run_state.h"

namespace ml::cli {

/// Lets the tags and orders that directories keep by name follow files which have other names now. Tells of those that
/// could not.
void LetMarksFollow(const catalogue::RenamedPaths& renamed, RunState& state);

}  // namespace ml::cli
