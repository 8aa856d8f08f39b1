#include "app/exit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace ml::app {
namespace {

constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};
// A signal handler may only write to a pipe; the event loop reads the other end.
std::array<int, 2> pipeEnds{-1, -1};
std::array<struct sigaction, kSignals.size()> oldActions{};

void OnSignal(int) {
  const int saved = errno;
  const char byte = 0;
  // A full pipe means that the event loop has been told already.
  [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
  errno = saved;
}

}  // namespace

ExitSignals::ExitSignals(std::function<void()> leave) : leave_(std::move(leave)) {
  if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
    throw std::system_error(errno, std::generic_category(), "pipe2");
  notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    char byte = 0;
    while (::read(pipeEnds[0], &byte, 1) > 0) {
    }
    leave_();
  });
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &oldActions[i]);
    // Who started us with a signal ignored (nohup) wants it ignored.
    if (oldActions[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
  }
}

ExitSignals::~ExitSignals() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &oldActions[i], nullptr);
  notifier_.reset();
  for (auto& end : pipeEnds) {
    ::close(end);
    end = -1;
  }
}

}  // namespace ml::app
