#pragma once

#include <QObject>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace ml::app {

/// Turns SIGTERM, SIGHUP and SIGINT into one call on the window's thread, so that they end the program as its
/// Quit command does. The old handlers come back with the destructor. One object at a time.
class ExitSignals final {
 public:
  /// `leave` runs in the event loop of the thread that makes this object.
  explicit ExitSignals(std::function<void()> leave);
  ~ExitSignals();
  ExitSignals(const ExitSignals&) = delete;
  ExitSignals& operator=(const ExitSignals&) = delete;

 private:
  std::function<void()> leave_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ml::app
