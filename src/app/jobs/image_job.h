#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_runner.h"
#include "platform/edit_batch.h"
#include "platform/job_host.h"
#include "platform/ui/job_window.h"

namespace ml::app {

/// What the job of a command works with.
struct ImageJobTools {
  const platform::JobHost& host;
  const std::stop_token& stop;
  platform::EditBatch& batch;  ///< one for the whole command
};

/// A command that changes several image files, one after the other.
struct ImageJob {
  std::string title;         ///< of the progress window, and what Undo calls it
  std::string progressVerb;  ///< "Rotating" gives "Rotating image 3 of 20"
  std::vector<std::string> paths;
  /// Called on the job's thread. What it throws ends the job.
  std::function<void(const std::string& path, const ImageJobTools& tools)> act;
  platform::ui::JobWindowShows window = platform::ui::JobWindowShows::AfterHalfASecond;
  QWidget* over = nullptr;  ///< boxes and progress stand over it; null: the main window
};

/// A command that changes files in a way of its own.
struct WholeJob {
  std::string title;  ///< of the progress window, and what Undo calls it
  /// Called once, on the job's thread; tells how far it is and looks at the stop token itself.
  std::function<void(const ImageJobTools& tools)> run;
  platform::ui::JobWindowShows window = platform::ui::JobWindowShows::AfterHalfASecond;
  QWidget* over = nullptr;  ///< as for an ImageJob
};

/// Runs the job with the worker standing still. Whatever comes of it, the edits made until then can be undone, or the
/// status line tells that they cannot. Throws what `run` threw; of cancelling the status line tells.
void RunWholeJob(CommandContext& context, const WholeJob& job);

/// Runs the job over all its paths as RunWholeJob() does.
void RunImageJob(CommandContext& context, const ImageJob& job);

/// Makes the notes of a command called `what` lasting; the status line tells if it cannot be undone.
void CommitEdits(CommandContext& context, const std::string& what, platform::EditBatch& batch);

/// The images that a command for several acts on; none, with a box that says `pleaseSelect`, if nothing is selected.
std::vector<std::string> TargetsOf(CommandContext& context, std::string_view pleaseSelect);

/// Of a job called `title`, at the priority that the settings ask for.
platform::ui::JobLook JobLookOf(const Session& session, std::string_view title);

/// Text of the status line for some seconds.
void ShowStatus(CommandContext& context, const std::string& text);

}  // namespace ml::app
