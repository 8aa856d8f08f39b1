#pragma once

#include <algorithm>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "platform/job_host.h"

/// What the tools share that work on many images, one after the other.
namespace ml::imagefiles {

enum class ToolResult {
  Done,
  Skipped,
  Kept,  ///< skipped, because the file at `output` is to stay as it is
  Failed,
};

/// What became of one image, or of one of the files made for it.
struct ToolItem {
  std::string path;      ///< the image
  std::string output{};  ///< the file that was changed or made, or would have been; empty if there is none
  ToolResult result = ToolResult::Done;
  std::string note{};  ///< why it was skipped or failed
};

using ToolReport = std::vector<ToolItem>;

inline int CountDone(const ToolReport& report) {
  return static_cast<int>(std::ranges::count(report, ToolResult::Done, &ToolItem::result));
}

enum class OnFailure {
  Stop,  ///< the failure of an image ends the run: its UserError is thrown; what was done stays done
  GoOn,  ///< it is noted in the report
};

/// How such a tool is run. Owns nothing. A stop request is heard between two images; Cancelled is thrown then.
struct ToolRun {
  const platform::JobHost& host;
  std::stop_token stop = {};
  OnFailure onFailure = OnFailure::Stop;
  /// Null, or told of each item as soon as it is known.
  std::function<void(const ToolItem&)> told = nullptr;
};

}  // namespace ml::imagefiles
