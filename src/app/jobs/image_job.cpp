#include "app/jobs/image_job.h"

#include <QStatusBar>

#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "platform/errors.h"
#include "platform/ui/job_window.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/qt_text.h"
#include "platform/worker_gate.h"

namespace ml::app {
namespace {

void RunAll(const ImageJob& job, const ImageJobTools& tools) {
  const auto count = job.paths.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (tools.stop.stop_requested()) throw platform::Cancelled();
    tools.host.progress.text(job.progressVerb + " image " + std::to_string(i + 1) + " of " + std::to_string(count));
    tools.host.progress.percent(static_cast<int>(i * 100 / count));
    job.act(job.paths[i], tools);
  }
}

/// By "ThreadPriority": 0 normal, 1 low, 2 high.
int NiceOf(int threadPriority) {
  constexpr int kNice[] = {0, 10, -5};
  return threadPriority == 1 || threadPriority == 2 ? kNice[threadPriority] : kNice[0];
}

}  // namespace

platform::ui::JobLook JobLookOf(const Session& session, std::string_view title) {
  return {.title = platform::ui::ToQString(title), .nice = NiceOf(session.settings.raw.threadPriority)};
}

std::vector<std::string> TargetsOf(CommandContext& context, std::string_view pleaseSelect) {
  auto& session = context.session;
  auto paths = session.TargetPaths();
  if (paths.empty() && !session.list.Empty()) session.Ask().message({.text = std::string(pleaseSelect)});
  return paths;
}

void ShowStatus(CommandContext& context, const std::string& text) {
  constexpr int kMilliseconds = 10'000;
  context.frame.statusBar()->showMessage(platform::ui::ToQString(text), kMilliseconds);
}

void CommitEdits(CommandContext& context, const std::string& what, platform::EditBatch& batch) {
  batch.Commit();
  if (batch.Undoable()) return;
  ShowStatus(context, what + ": this cannot be undone" + (batch.Failure() ? ": " + *batch.Failure() : ""));
}

void RunImageJob(CommandContext& context, const ImageJob& job) {
  if (job.paths.empty()) return;
  RunWholeJob(context, {job.title, [&](const ImageJobTools& tools) { RunAll(job, tools); }, job.window, job.over});
}

void RunWholeJob(CommandContext& context, const WholeJob& job) {
  auto& session = context.session;
  const platform::PauseGuard thumbnails(session.Worker());
  const platform::PauseGuard pictures(context.view.Display().Gate());
  platform::EditBatch batch(session.Journal().Edits(), job.title);
  const auto settle = [&] { CommitEdits(context, job.title, batch); };
  auto look = JobLookOf(session, job.title);
  look.shows = job.window;
  try {
    platform::ui::QtInteraction overIt(job.over);
    platform::ui::RunJob(job.over != nullptr ? job.over : &context.frame, look,
                         job.over != nullptr ? static_cast<platform::Interaction&>(overIt) : session.Ask(),
                         [&](const platform::JobHost& host, const std::stop_token& stop) {
                           job.run({host, stop, batch});
                         });
  } catch (const platform::Cancelled&) {
    // What was done stays done.
    ShowStatus(context, job.title + ": cancelled");
  } catch (...) {
    settle();
    throw;
  }
  settle();
}

}  // namespace ml::app
