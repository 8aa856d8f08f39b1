#include "platform/ordered_jobs.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace ml::platform {

namespace {

class OrderedRun {
 public:
  OrderedRun(const OrderedJobs& jobs, std::stop_token stop)
      : jobs_(jobs), stop_(std::move(stop)), done_(static_cast<std::size_t>(jobs.count), false) {}

  int Run() {
    active_ = std::clamp(jobs_.threads, 1, std::max(jobs_.count, 1));
    std::vector<std::jthread> threads;
    for (int i = active_; i > 0; --i) threads.emplace_back([this] { Work(); });
    int finished = 0;
    try {
      for (; finished < jobs_.count && WaitFor(finished); ++finished) {
        if (jobs_.finish) jobs_.finish(finished);
      }
    } catch (...) {
      Fail(std::current_exception());
    }
    threads.clear();
    if (failure_) std::rethrow_exception(failure_);
    return finished;
  }

 private:
  /// False if it will never be done.
  bool WaitFor(int index) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return done_[static_cast<std::size_t>(index)] || active_ == 0; });
    return done_[static_cast<std::size_t>(index)] && !failure_;
  }

  void Work() {
    try {
      for (int index = Begin(); index >= 0; index = Begin()) {
        jobs_.work(index);
        const std::lock_guard guard(lock_);
        done_[static_cast<std::size_t>(index)] = true;
        changed_.notify_all();
      }
    } catch (...) {
      Fail(std::current_exception());
    }
    const std::lock_guard guard(lock_);
    --active_;
    changed_.notify_all();
  }

  /// The next job, -1 if there is none.
  int Begin() {
    const std::lock_guard guard(beginLock_);
    if (next_ == jobs_.count || stop_.stop_requested() || HasFailed()) return -1;
    if (jobs_.begin) jobs_.begin(next_);
    return next_++;
  }

  void Fail(std::exception_ptr failure) {
    const std::lock_guard guard(lock_);
    if (!failure_) failure_ = std::move(failure);
  }
  bool HasFailed() {
    const std::lock_guard guard(lock_);
    return failure_ != nullptr;
  }

  const OrderedJobs& jobs_;
  const std::stop_token stop_;
  std::mutex beginLock_;
  int next_ = 0;  ///< guarded by beginLock_

  std::mutex lock_;  ///< guards the rest
  std::condition_variable changed_;
  std::vector<bool> done_;
  int active_ = 0;  ///< threads
  std::exception_ptr failure_;
};

}  // namespace

int RunOrdered(const OrderedJobs& jobs, const std::stop_token& stop) { return OrderedRun(jobs, stop).Run(); }

}  // namespace ml::platform
