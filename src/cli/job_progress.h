#pragma once

#include "cli/progress_line.h"
#include "cli/run_state.h"
#include "cli/unattended_answers.h"
#include "platform/progress.h"

namespace ml::cli {

/// A job's progress on the terminal.
class JobProgress final : public platform::NoProgress {
 public:
  explicit JobProgress(std::size_t count) : line_(static_cast<int>(count)) {}
  void text(const std::string& name) override { line_.Next(name); }
  void Clear() { line_.Clear(); }

 private:
  ProgressLine line_;
};

/// Tells a job's messages as failures of the run.
class JobAnswers final : public UnattendedAnswers {
 public:
  JobAnswers(RunState& state, JobProgress& progress) : state_(state), progress_(progress) {}
  void message(const platform::MessageBox& box) override {
    progress_.Clear();
    state_.Fail(box.text);
  }

 private:
  RunState& state_;
  JobProgress& progress_;
};

}  // namespace ml::cli
