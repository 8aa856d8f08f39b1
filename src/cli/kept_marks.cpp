#include "cli/kept_marks.h"

namespace ml::cli {

void LetMarksFollow(const catalogue::RenamedPaths& renamed, RunState& state) {
  for (const auto& path : catalogue::FollowInDirectories(renamed)) {
    state.Fail(path + ": still has the old names, it cannot be written");
  }
}

}  // namespace ml::cli
