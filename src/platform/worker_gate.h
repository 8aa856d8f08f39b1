#pragma once

namespace ml::platform {

/// The thumbnail worker as others see it: whoever changes the catalogue or must decode alone stops it first.
class WorkerGate {
 public:
  virtual ~WorkerGate() = default;
  /// Returns only when no thumbnail is in progress and none can start.
  virtual void Pause() = 0;
  /// Starts the worker again, however many pauses preceded: pauses do not nest.
  virtual void Resume() = 0;
};

/// A pause for one scope, or until a gated call inside of it, which resumes.
class PauseGuard {
 public:
  explicit PauseGuard(WorkerGate& gate) : gate_(gate) { gate_.Pause(); }
  ~PauseGuard() { gate_.Resume(); }
  PauseGuard(const PauseGuard&) = delete;
  PauseGuard& operator=(const PauseGuard&) = delete;

 private:
  WorkerGate& gate_;
};

}  // namespace ml::platform
