#include "platform/ordered_jobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <vector>

namespace ml::platform {
namespace {

std::vector<int> FirstNumbers(int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), 0);
  return numbers;
}

TEST(RunOrdered, BeginsAndFinishesInOrderAndWorksOnceOnEach) {
  for (const int threads : {0, 1, 3, 50}) {
    std::vector<int> begun, finished;
    std::vector<std::atomic<int>> worked(200);
    const OrderedJobs jobs{.count = 200,
                           .threads = threads,
                           .begin = [&](int index) { begun.push_back(index); },
                           .work = [&](int index) { ++worked[static_cast<std::size_t>(index)]; },
                           .finish =
                               [&](int index) {
                                 EXPECT_EQ(worked[static_cast<std::size_t>(index)], 1);
                                 finished.push_back(index);
                               }};
    EXPECT_EQ(RunOrdered(jobs, {}), 200);
    EXPECT_EQ(begun, FirstNumbers(200));
    EXPECT_EQ(finished, FirstNumbers(200));
  }
  EXPECT_EQ(RunOrdered({.count = 0, .threads = 2, .begin = {}, .work = {}}, {}), 0);
}

TEST(RunOrdered, AStopLetsWhatWasBegunBeFinished) {
  const auto stop = std::make_unique<std::stop_source>();  // on the stack g++ 12 takes it for uninitialised
  std::atomic<int> begun = 0;
  const int finished = RunOrdered({.count = 1000,
                                   .threads = 3,
                                   .begin = [&](int index) { begun = index + 1; },
                                   .work = [&](int index) { index == 20 ? stop->request_stop() : false; }},
                                  stop->get_token());
  EXPECT_EQ(finished, begun);
  EXPECT_GE(finished, 21);
  EXPECT_LT(finished, 1000);
}

TEST(RunOrdered, AFailureEndsTheRunAndReachesTheCaller) {
  const auto failAt = [](int bad) {
    return [bad](int index) {
      if (index == bad) throw std::runtime_error("bad");
    };
  };
  const auto nothing = [](int) {};
  EXPECT_THROW(RunOrdered({.count = 50, .threads = 2, .begin = failAt(7), .work = nothing}, {}), std::runtime_error);
  EXPECT_THROW(RunOrdered({.count = 50, .threads = 2, .begin = nothing, .work = failAt(7)}, {}), std::runtime_error);
  EXPECT_THROW(RunOrdered({.count = 50, .threads = 2, .begin = nothing, .work = nothing, .finish = failAt(7)}, {}),
               std::runtime_error);
}

}  // namespace
}  // namespace ml::platform
