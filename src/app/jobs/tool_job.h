#pragma once

#include <functional>
#include <string>

#include "app/command_runner.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/tools/tool_run.h"

namespace ml::app {

struct ToolJob {
  std::string title;  ///< of the progress window, and what Undo calls it
  /// Called on the job's thread; tells of each item by `run.told`. What it throws ends the job.
  std::function<void(const imagefiles::EditTools& tools, const imagefiles::ToolRun& run)> act;
};

/// Runs a tool over files. Thumbnails, list and image on show are brought up to date, whatever came of it. Gives what
/// it did. Throws what `act` threw; of cancelling the status line tells.
imagefiles::ToolReport RunToolJob(CommandContext& context, const ToolJob& job);

}  // namespace ml::app
