#include "app/jobs/viewing_jpegs_job.h"

#include <QApplication>

#include "app/edit_messages.h"
#include "app/jobs/image_job.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "imagefiles/edits/developed_jpegs.h"
#include "imagefiles/eos1d_test.h"
#include "platform/companion_set.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

std::vector<std::string> RawFilesWithout(Session& session) {
  std::vector<std::string> paths;
  for (const auto& path : session.list.files) {
    if (!platform::EndsWithNoCase(path, ".tif") || !platform::FindCompanion(path, ".jpg").empty()) continue;
    // Not the handlers' wider test: only here would the catalogue take the JPEG for a companion.
    if (imagefiles::catalogueEos1D(path) && session.memory.viewingJpegsTried.insert(path).second) paths.push_back(path);
  }
  return paths;
}

}  // namespace

void MakeMissingViewingJpegs(CommandContext& context) {
  auto& session = context.session;
  if (session.settings.catalogue.autoCreateEos1DRawJpegs == 0 || QApplication::activeModalWidget() != nullptr) return;
  const auto paths = RawFilesWithout(session);
  if (paths.empty()) return;
  const auto options = session.ImageOptions();
  imagefiles::CompanionFinder companions(options);
  auto& developer = session.Developer();
  const imagefiles::ViewingJpegSettings settings{.quality = session.settings.raw.jpegQuality,
                                                 .half = session.settings.catalogue.largeEos1DRawJpegs == 0};
  std::string failures;
  const auto make = [&](const std::string& path, const ImageJobTools& tools) {
    try {
      imagefiles::MakeViewingJpeg(path, settings, &developer,
                                  {.options = options, .companions = companions, .edit = {.recorder = &tools.batch}});
    } catch (const platform::UserError& error) {
      failures += (failures.empty() ? "" : "\n\n") + NamingTheFile(error.what(), path);
    }
  };
  RunImageJob(context, {.title = std::string(kViewingJpegJob),
                        .progressVerb = std::string(kViewingJpegJob) + ",",
                        .paths = paths,
                        .act = make});
  session.FilesChanged(paths);
  session.Images().RefreshDirectory();
  if (!failures.empty()) session.Ask().message({.text = failures, .icon = platform::BoxIcon::Warning});
}

}  // namespace ml::app
