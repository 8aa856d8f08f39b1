#pragma once

#include <functional>

namespace ml::test {

/// How a child process ends in which an exception escaped or which a signal ended.
inline constexpr int kBrokenExit = 99;

/// Runs `act` in a child process; its exit status is what `act` gave.
int RunInChild(const std::function<int()>& act);
/// The same as a user who owns nothing and has no privileges; whether it returned true.
bool RunAsNobody(const std::function<bool()>& act);

}  // namespace ml::test
