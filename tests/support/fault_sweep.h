#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/errors.h"
#include "support/child_process.h"
#include "support/faulty_file_system.h"

namespace ml::test {

/// What one run under a fault came to.
enum class Outcome { Done, Refused, Killed };

/// Runs `act` once for every call it makes, with the fault at that call, until a run passes without meeting
/// it. Before each run `prepare`, after it `verify` with what came of it. A UserError is a refusal; runs that
/// may be killed happen in a child process. Gives the number of runs under a fault; stops at the first
/// failure of the test.
inline int SweepFaults(Fault fault, const std::function<void()>& prepare,
                       const std::function<void(platform::FileSystem&)>& act,
                       const std::function<void(Outcome)>& verify) {
  constexpr int kDone = 0, kRefused = 1, kMaxRuns = 2000;
  for (int step = 0; step < kMaxRuns; ++step) {
    const testing::ScopedTrace trace(
        __FILE__, __LINE__, "fault " + std::to_string(static_cast<int>(fault)) + " at call " + std::to_string(step));
    prepare();
    FaultyFileSystem faulty(fault, step);
    const auto run = [&] {
      try {
        act(faulty);
        return kDone;
      } catch (const platform::UserError&) {
        return kRefused;
      }
    };
    const int result = IsKill(fault) ? RunInChild(run) : run();
    if (result == kBrokenExit) ADD_FAILURE() << "the child broke down";
    verify(result == kDone ? Outcome::Done : result == kRefused ? Outcome::Refused : Outcome::Killed);
    if (testing::Test::HasFailure()) return step;
    if (IsKill(fault) ? result != kKilledExit : !faulty.Hit()) return step;
  }
  ADD_FAILURE() << "no end after " << kMaxRuns << " runs";
  return kMaxRuns;
}

}  // namespace ml::test
