#pragma once

#include <functional>
#include <stop_token>

namespace ml::platform {

/// Work on many things, of which each is begun and finished in its turn while the work between runs on several
/// threads. Indices count from 0.
struct OrderedJobs {
  int count = 0;
  int threads = 1;                                  ///< at least 1
  std::function<void(int index)> begin;             ///< on some thread, one at a time, in order
  std::function<void(int index)> work;              ///< on some thread, several at once
  std::function<void(int index)> finish = nullptr;  ///< on the calling thread, in order
};

/// Runs all jobs; after a stop request only those that were begun. How many were finished, the first ones. What a
/// function throws ends the run and is thrown on once all threads have ended.
int RunOrdered(const OrderedJobs& jobs, const std::stop_token& stop);

}  // namespace ml::platform
