#pragma once

#include <functional>
#include <stop_token>

namespace ml::rawconvert {

/// How a piece of the decoder's work is run.
struct NefRun {
  std::function<void(int percent)> progress = nullptr;  ///< called on the calling thread; 0..100
  std::stop_token stop{};                               ///< a request ends the work with platform::Cancelled
  int threads = 0;                                      ///< 0: as many as there are processors
};

}  // namespace ml::rawconvert
