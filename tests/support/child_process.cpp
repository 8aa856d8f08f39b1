#include "support/child_process.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <iostream>

namespace ml::test {

namespace {

constexpr uid_t kNobody = 65534;

bool BecomeNobody() {
  return ::geteuid() != 0 || (::setgroups(0, nullptr) == 0 && ::setresgid(kNobody, kNobody, kNobody) == 0 &&
                              ::setresuid(kNobody, kNobody, kNobody) == 0);
}

}  // namespace

int RunInChild(const std::function<int()>& act) {
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    int result = kBrokenExit;
    try {
      result = act();
    } catch (const std::exception& error) {
      std::cerr << "child: " << error.what() << std::endl;
    }
    ::_exit(result);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) return kBrokenExit;
  return WIFEXITED(status) ? WEXITSTATUS(status) : kBrokenExit;
}

bool RunAsNobody(const std::function<bool()>& act) {
  return RunInChild([&] { return BecomeNobody() && act() ? 0 : 1; }) == 0;
}

}  // namespace ml::test
