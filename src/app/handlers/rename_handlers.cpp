#include <QScopeGuard>
#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include "app/command_runner.h"
#include "app/file_messages.h"
#include "app/jobs/image_job.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/rename_choices.h"
#include "app/session.h"
#include "batch/apply_rename.h"
#include "batch/messages.h"
#include "batch/ui/batch_rename_dialog.h"
#include "catalogue/job_names.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/ui/job_window.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using batch::ui::RenameTargets;
using catalogue::CaseMode;

constexpr const char* kPlaceName = "BatchRename";

struct Targets {
  std::vector<std::string> paths;
  RenameTargets kind = RenameTargets::All;
};

/// The selected images, or all where none is or where a selection is not seen.
Targets TargetsFor(const Session& session) {
  auto selected = session.mode == ViewMode::Main ? std::vector<std::string>{} : session.list.SelectedPaths();
  if (selected.empty()) return {session.list.files, RenameTargets::All};
  return {std::move(selected), RenameTargets::Selected};
}

/// With "/" at its end. Throws UserError if it is not the same for all.
std::string DirectoryOfAll(const std::vector<std::string>& paths) {
  std::string directory(platform::DirectoryOf(paths.front()));
  if (!std::ranges::all_of(paths, [&](const auto& path) { return platform::DirectoryOf(path) == directory; })) {
    throw platform::UserError(std::string(kSeveralDirectories));
  }
  return directory;
}

/// Many are read by a job, which throws Cancelled if the user does not want to wait.
std::vector<batch::RenameImage> ReadImages(CommandContext& context, const std::vector<std::string>& paths) {
  const auto options = options::ExifOptionsOf(context.session.settings);
  if (paths.size() < batch::kReadWithProgress) {
    platform::NoProgress silent;
    return batch::ReadRenameImages(paths, options, silent, {});
  }
  std::vector<batch::RenameImage> images;
  platform::ui::RunJob(&context.frame, JobLookOf(context.session, catalogue::kBatchRenameJob), context.session.Ask(),
                       [&](const platform::JobHost& host, const std::stop_token& stop) {
                         images = batch::ReadRenameImages(paths, options, host.progress, stop);
                       });
  return images;
}

/// What the user accepted.
struct Accepted {
  batch::RenamePaths paths;
  CaseMode caseMode;
};

/// What is accepted is remembered for the next batch, whatever becomes of this one.
std::optional<Accepted> AskNewNames(CommandContext& context, const Targets& targets, const std::string& directory) {
  auto& settings = context.session.settings;
  imagefiles::CompanionFinder companions(context.session.ImageOptions());
  auto images = ReadImages(context, targets.paths);
  auto others = batch::OtherFiles(directory, images);
  const auto check = [&](const batch::NewNames& names, const batch::RenameStyle& style) {
    CheckNewNames(directory, names, style.caseMode, companions);
  };
  batch::ui::CBatchRenameDialog dialog(
      {.images = std::move(images), .otherFiles = std::move(others), .targets = targets.kind},
      RenameChoicesOf(settings.rename), check, &context.frame);
  auto& place = settings.dialogPlaces[kPlaceName];
  dialog.restoreGeometry(QByteArray(place.data(), static_cast<qsizetype>(place.size())));
  const bool accepted = dialog.exec() == QDialog::Accepted;
  place = dialog.saveGeometry().toStdString();
  if (!accepted) return std::nullopt;
  TakeRenameChoices(dialog.Form().Accepted(dialog.Names().nextCounter), settings.rename);
  return Accepted{PathsOf(directory, dialog.Names()), dialog.Form().Style().caseMode};
}

/// Marks, custom order and the current image follow each file.
void Rename(CommandContext& context, const Accepted& accepted) {
  auto& session = context.session;
  auto& worker = session.Worker();
  const platform::PauseGuard thumbnails(worker);
  const platform::PauseGuard pictures(context.view.Display().Gate());
  imagefiles::CompanionFinder companions(session.ImageOptions());
  platform::EditBatch batch(session.Journal().Edits(), std::string(catalogue::kBatchRenameJob));
  const auto settle = qScopeGuard([&] { CommitEdits(context, std::string(catalogue::kBatchRenameJob), batch); });
  const auto asJob = [&](catalogue::RenameTools& tools, const std::function<void()>& work) {
    platform::ui::RunJob(&context.frame, JobLookOf(session, catalogue::kBatchRenameJob), session.Ask(),
                         [&](const platform::JobHost& host, const std::stop_token& stop) {
                           host.progress.text(RenamingImages(accepted.paths.sources.size()));
                           tools.stop = stop;
                           tools.progress = [&](std::size_t done, std::size_t count) {
                             host.progress.percent(static_cast<int>(done * 100 / count));
                           };
                           work();
                         });
  };
  try {
    worker.RenameFiles(accepted.paths.sources, accepted.paths.destinations, accepted.caseMode,
                       {.companions = companions, .trash = session.Journal().Bin(), .batch = &batch}, asJob);
  } catch (const platform::Cancelled&) {
    ShowStatus(context, std::string(catalogue::kBatchRenameJob) + ": cancelled");
  } catch (const platform::UserError&) {
    throw;
  } catch (const std::exception&) {
    throw platform::UserError(batch::kErrorRenaming);
  }
}

void BatchRename(CommandContext& context) {
  auto& session = context.session;
  const auto targets = TargetsFor(session);
  if (targets.paths.empty()) return;
  const auto accepted = AskNewNames(context, targets, DirectoryOfAll(targets.paths));
  if (!accepted) return;
  const auto settle = qScopeGuard([&] {
    session.FilesChanged({});
    session.Images().RefreshDirectory();
  });
  Rename(context, *accepted);
}

constexpr HandlerRow kHandlers[] = {{CommandId::BatchRename, BatchRename}};

}  // namespace

std::span<const HandlerRow> RenameHandlers() { return kHandlers; }

}  // namespace ml::app
