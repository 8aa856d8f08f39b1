#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "imagefiles/tools/tool_run.h"
#include "platform/errors.h"

namespace ml::imagefiles {

/// Why a file could not be written, for a sentence that names it already.
inline std::string ReasonOf(const platform::UserError& error) {
  const std::string text = error.what();
  return text.substr(text.rfind('\n') + 1);
}

/// The report of a run as it grows.
class ToolNotes {
 public:
  /// Does not own the run.
  explicit ToolNotes(const ToolRun& run) : run_(run) {}

  void Add(ToolItem item) {
    if (run_.told) run_.told(item);
    report_.push_back(std::move(item));
  }
  void Skip(const std::string& path, std::string why) {
    Add({.path = path, .result = ToolResult::Skipped, .note = std::move(why)});
  }
  void Keep(const std::string& path, std::string output, std::string why) {
    Add({.path = path, .output = std::move(output), .result = ToolResult::Kept, .note = std::move(why)});
  }
  ToolReport Take() { return std::move(report_); }

 private:
  const ToolRun& run_;
  ToolReport report_;
};

/// Calls `act(path, index)` for one image after the other, with `progressText(number, count)` shown, or
/// `progressText(number, count, path)`. What it throws is noted, and thrown on if the run wants that.
template <class ProgressText, class Act>
void ForEachImage(const std::vector<std::string>& images, const ToolRun& run, ToolNotes& notes,
                  ProgressText&& progressText, Act&& act) {
  const auto count = static_cast<int>(images.size());
  for (int i = 0; i < count; ++i) {
    if (run.stop.stop_requested()) throw platform::Cancelled();
    const auto& path = images[static_cast<std::size_t>(i)];
    if constexpr (std::is_invocable_v<ProgressText, int, int>) {
      run.host.progress.text(progressText(i + 1, count));
    } else {
      run.host.progress.text(progressText(i + 1, count, path));
    }
    run.host.progress.position(i + 1, count);
    run.host.progress.percent(static_cast<int>(i * 100LL / count));
    try {
      act(path, static_cast<std::size_t>(i));
    } catch (const platform::UserError& error) {
      notes.Add({.path = path, .result = ToolResult::Failed, .note = error.what()});
      if (run.onFailure == OnFailure::Stop) throw;
    }
  }
}

}  // namespace ml::imagefiles
