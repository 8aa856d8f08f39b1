#include "cli/tool_run.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/edit_session.h"
#include "cli/job_progress.h"
#include "cli/output.h"
#include "platform/clock.h"
#include "platform/errors.h"
#include "platform/job_host.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

using imagefiles::ToolItem;
using imagefiles::ToolResult;

class Telling {
 public:
  Telling(const ToolCommand& command, GivenPaths& paths, JobProgress& progress, RunState& state)
      : command_(command), paths_(paths), progress_(progress), state_(state) {}

  void operator()(const ToolItem& item) {
    const auto given = paths_.Of(item.path);
    Json object;
    PutPath(object, "path", given);
    PutPath(object, "output", paths_.Of(item.output));
    const bool failed = Failed(item);
    object["ok"] = !failed;
    object["message"] = JsonText(item.note);
    results_.push_back(std::move(object));
    if (failed || !state_.json) progress_.Clear();
    if (failed) return state_.Fail(WithName(item, given));
    if (!state_.json) PrintLine(given + ": " + Line(item));
  }
  const Json& Results() const { return results_; }

 private:
  bool Failed(const ToolItem& item) const {
    return item.result == ToolResult::Failed || (item.result == ToolResult::Kept && !command_.keepingIsFine);
  }
  static std::string WithName(const ToolItem& item, const std::string& given) {
    return item.note.find(item.path) != std::string::npos ? item.note : given + ": " + item.note;
  }
  std::string Line(const ToolItem& item) const {
    if (item.result != ToolResult::Done) return "skipped, " + item.note;
    const auto line = (command_.dryRun ? "would be " : "") + command_.done + " " + paths_.Of(item.output);
    return item.note.empty() ? line : line + ", " + item.note;
  }

  const ToolCommand& command_;
  GivenPaths& paths_;
  JobProgress& progress_;
  RunState& state_;
  Json results_ = Json::array();
};

}  // namespace

platform::Button ToolAnswers::ask(const platform::MessageBox&) {
  return yes ? platform::Button::Yes : platform::Button::No;
}

platform::FileExistsAnswer ToolAnswers::fileExists(const std::string&) {
  return overwrite ? platform::FileExistsAnswer::Overwrite : platform::FileExistsAnswer::Skip;
}

void RunTool(const std::vector<std::string>& files, const ToolCommand& command, ToolAnswers& answers, RunState& state) {
  GivenPaths paths;
  std::vector<std::string> images;
  for (const auto& given : files) {
    auto path = paths.Add(given);
    if (std::ranges::find(images, path) == images.end()) images.push_back(std::move(path));
  }
  for (const auto& given : files) {
    const auto directory = platform::DirectoryOf(given);
    paths.Add(directory.empty() ? "." : std::string(directory));
  }
  if (!command.place.empty()) paths.Add(command.place);
  EditSession session(command.what, state,
                      command.dryRun ? imagefiles::WriteMode::DryRun : imagefiles::WriteMode::Write);
  JobProgress progress(images.size());
  Telling telling(command, paths, progress, state);
  const platform::SystemClock clock;
  const platform::JobHost host{answers, progress, clock};
  bool cancelled = false;
  {
    const ImageSession tools(session);
    try {
      command.run(images, tools.Tools(),
                  {.host = host,
                   .stop = state.stop,
                   .onFailure = imagefiles::OnFailure::GoOn,
                   .told = [&](const ToolItem& item) { telling(item); }});
    } catch (const platform::Cancelled&) {
      cancelled = true;
    }
  }
  progress.Clear();
  session.Finish();
  if (state.json) PrintJson(telling.Results());
  if (cancelled) throw platform::Cancelled();
}

}  // namespace ml::cli
