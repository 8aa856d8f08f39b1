#pragma once

#include "cli/progress_line.h"
#include "cli/run_state.h"
#include "platform/interaction.h"
#include "platform/progress.h"

namespace ml::cli {

/// A job's progress on the terminal.
class JobProgress final : public platform::Progress {
 public:
  explicit JobProgress(std::size_t count) : line_(static_cast<int>(count)) {}
  void percent(int) override {}
  void text(const std::string& name) override { line_.Next(name); }
  void secondText(const std::string&) override {}
  void picture(std::span<const std::byte>, int, int) override {}
  void position(int, int) override {}
  void Clear() { line_.Clear(); }

 private:
  ProgressLine line_;
};

/// Tells a job's messages as failures of the run. Nobody is there to be asked: the answers are those that change
/// nothing.
class JobAnswers final : public platform::Interaction {
 public:
  JobAnswers(RunState& state, JobProgress& progress) : state_(state), progress_(progress) {}
  void message(const platform::MessageBox& box) override {
    progress_.Clear();
    state_.Fail(box.text);
  }
  platform::Button ask(const platform::MessageBox&) override { return platform::Button::Cancel; }
  CheckedAnswer askCheck(const platform::MessageBox&, const std::string&) override { return {}; }
  std::optional<std::string> saveAs(const SaveAsQuestion&) override { return std::nullopt; }
  platform::FileExistsAnswer fileExists(const std::string&) override { return platform::FileExistsAnswer::Skip; }

 private:
  RunState& state_;
  JobProgress& progress_;
};

}  // namespace ml::cli
