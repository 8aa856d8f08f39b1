#include "app/jobs/convert_job.h"

#include <QScopeGuard>
#include <algorithm>

#include "app/convert_messages.h"
#include "app/jobs/image_job.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "platform/ui/job_window.h"
#include "platform/ui/qt_text.h"
#include "platform/worker_gate.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;
using rawconvert::ConvertedFile;

void BringUpToDate(CommandContext& context, const std::vector<ConvertedFile>& made) {
  auto& session = context.session;
  std::vector<std::string> outputs;
  for (const auto& file : made) {
    if (file.result == rawconvert::Converted::Yes) outputs.push_back(file.output);
  }
  const auto top = context.view.TopPath();
  session.FilesChanged(outputs);
  session.Images().RefreshDirectory();
  context.view.ScrollToTop(top);
  context.view.RefreshTree();
  const bool onShow = std::ranges::find(outputs, session.list.currentPath) != outputs.end();
  if (onShow && session.mode != ViewMode::Thumbnails) context.view.ReloadImage();
}

}  // namespace

std::vector<ConvertedFile> RunConversion(CommandContext& context, const rawconvert::BatchConversion& batch,
                                         rawconvert::RawConversionSettings settings) {
  auto& session = context.session;
  auto& developer = session.Developer();
  std::vector<ConvertedFile> made;
  {
    const auto settle = qScopeGuard([&] { BringUpToDate(context, made); });
    const platform::PauseGuard thumbnails(session.Worker());
    const platform::PauseGuard pictures(context.view.Display().Gate());
    auto look = JobLookOf(session, kConvertJob);
    look.bars = platform::ui::JobBars::FileAndWhole;
    look.position = [&](int index, int count) {
      context.frame.setWindowTitle(ToQString(ConvertingTitle(index, count)));
    };
    platform::ui::RunJob(&context.frame, look, session.Ask(),
                         [&](const platform::JobHost& host, const std::stop_token& stop) {
                           made = rawconvert::RunBatchConversion(batch, settings, developer, host, stop);
                         });
  }
  const auto done = std::ranges::count(made, rawconvert::Converted::Yes, &ConvertedFile::result);
  ShowStatus(context, Converted(static_cast<int>(done), static_cast<int>(batch.files.size())));
  return made;
}

}  // namespace ml::app
