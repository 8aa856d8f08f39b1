#pragma once

#include <ctime>
#include <string>

namespace ml::rawconvert {

/// How long a run of several files will take, by how long the files so far took.
struct TimeEstimate {
  std::time_t start = 0;  ///< moved on by as much as the run stood still
  int count = 0;          ///< files of the run

  /// Three lines: the time that remains, when all is ready, and the average. Empty before the first file is done.
  std::string Text(std::time_t now, int done) const;
};

}  // namespace ml::rawconvert
