#include "app/jobs/tool_job.h"

#include <algorithm>

#include "app/jobs/image_job.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "imagefiles/format_table.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

using imagefiles::ToolItem;
using imagefiles::ToolReport;
using imagefiles::ToolResult;

/// Images that were made in the directory on show join the list.
void BringUpToDate(CommandContext& context, const ToolReport& report) {
  auto& session = context.session;
  std::vector<std::string> changed;
  bool isNew = false;
  for (const auto& item : report) {
    if (item.result != ToolResult::Done || item.output.empty()) continue;
    changed.push_back(item.output);
    const bool here = platform::normaliseDirectory(platform::DirectoryOf(item.output)) == session.Images().Directory();
    const bool listed = session.list.IndexOfPath(item.output) >= 0;
    isNew = isNew || (here && !listed && imagefiles::FindFormat(item.output) != nullptr);
  }
  session.FilesChanged(changed);
  if (isNew) {
    const auto top = context.view.TopPath();
    session.Images().RefreshDirectory();
    context.view.ScrollToTop(top);
  }
  const bool onShow = std::ranges::find(changed, session.list.currentPath) != changed.end();
  if (onShow && session.mode != ViewMode::Thumbnails) context.view.ReloadImage();
}

}  // namespace

ToolReport RunToolJob(CommandContext& context, const ToolJob& job) {
  const auto options = context.session.ImageOptions();
  imagefiles::CompanionFinder companions(options);
  ToolReport report;
  const auto run = [&](const ImageJobTools& tools) {
    job.act({.options = options, .companions = companions, .edit = {.recorder = &tools.batch}},
            {.host = tools.host, .stop = tools.stop, .told = [&](const ToolItem& item) { report.push_back(item); }});
  };
  try {
    RunWholeJob(context, {job.title, run});
  } catch (...) {
    BringUpToDate(context, report);
    throw;
  }
  BringUpToDate(context, report);
  return report;
}

}  // namespace ml::app
