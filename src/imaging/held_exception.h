#pragma once

#include <exception>
#include <utility>

namespace ml::imaging {

/// What is thrown inside the calls of a C library waits here, because no exception may cross it.
class HeldException {
 public:
  /// Whether `step` came to its end.
  template <class Step>
  bool Does(Step&& step) noexcept {
    try {
      std::forward<Step>(step)();
      return true;
    } catch (...) {
      exception_ = std::current_exception();
      return false;
    }
  }
  /// Throws what waits, if anything does: once the library has returned.
  void Rethrow() const {
    if (exception_) std::rethrow_exception(exception_);
  }

 private:
  std::exception_ptr exception_;
};

}  // namespace ml::imaging
