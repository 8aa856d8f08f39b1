#pragma once

#include <atomic>
#include <thread>

#include "platform/errors.h"
#include "rawconvert/develop_watch.h"

namespace ml::rawconvert {

/// Tells of a part of the work, by rows, and ends it after a stop request.
class RowProgress {
 public:
  /// The part begins at `from` and has `span` of 100. Does not own the watch.
  RowProgress(const DevelopWatch& watch, int from, int span) : watch_(watch), from_(from), span_(span) {}

  /// `row` of `rows` is come to; on the thread that made this. Throws Cancelled.
  void Reach(int row, int rows) {
    if (watch_.stop.stop_requested()) throw platform::Cancelled();
    const int percent = from_ + static_cast<int>(static_cast<long long>(span_) * row / rows);
    if (percent == told_ || !watch_.progress) return;
    told_ = percent;
    watch_.progress->percent(percent);
  }
  /// Some more of `rows` are done; on any thread. Only the one that made this tells of it.
  void Add(int done, int rows) {
    const int all = done_ += done;
    if (std::this_thread::get_id() == owner_) Reach(all, rows);
  }

 private:
  const DevelopWatch& watch_;
  const int from_, span_;
  int told_ = -1;
  std::atomic<int> done_ = 0;
  const std::thread::id owner_ = std::this_thread::get_id();
};

}  // namespace ml::rawconvert
