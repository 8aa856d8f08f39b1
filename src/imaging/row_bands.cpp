#include "imaging/row_bands.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/errors.h"

namespace ml::imaging {
namespace {

/// For each thread, so that one that is held up does not hold up the whole.
constexpr int kBandsPerThread = 8;

}  // namespace

void ForRowBands(int rows, const std::function<void(int first, int end)>& work, const std::stop_token& stop,
                 int minimum) {
  const int processors = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
  const int band = std::max(minimum, rows / (processors * kBandsPerThread));
  std::atomic<int> next = 0;
  std::mutex mutex;
  std::exception_ptr failure;
  const auto run = [&] {
    try {
      for (int first = next.fetch_add(band); first < rows; first = next.fetch_add(band)) {
        if (stop.stop_requested()) throw platform::Cancelled();
        work(first, std::min(rows, first + band));
      }
    } catch (...) {
      next = rows;
      const std::scoped_lock lock(mutex);
      if (!failure) failure = std::current_exception();
    }
  };
  {
    const int helpers = std::clamp((rows + band - 1) / band - 1, 0, processors - 1);
    std::vector<std::jthread> threads;
    for (int i = 0; i < helpers; ++i) threads.emplace_back(run);
    run();
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace ml::imaging
