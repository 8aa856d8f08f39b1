#include <QScopeGuard>
#include <algorithm>
#include <set>
#include <string>

#include "app/command_runner.h"
#include "app/dialogs/directory_question.h"
#include "app/dialogs/rename_dialog.h"
#include "app/dialogs/timestamp_dialog.h"
#include "app/file_messages.h"
#include "app/handlers/tree_directory.h"
#include "app/jobs/image_job.h"
#include "app/jobs/transfer_job.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "catalogue/delete_files.h"
#include "catalogue/job_names.h"
#include "catalogue/messages.h"
#include "catalogue/new_name.h"
#include "catalogue/renamed_names.h"
#include "catalogue/shooting_timestamps.h"
#include "catalogue/transfer_files.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/ui/job_window.h"

namespace ml::app {
namespace {

using catalogue::DeleteTo;
using catalogue::TransferKind;

template <TransferKind kind>
void Transfer(CommandContext& context) {
  constexpr bool kMove = kind == TransferKind::Move;
  auto& session = context.session;
  const auto paths = TargetsOf(context, kMove ? kSelectToMove : kSelectToCopy);
  if (paths.empty()) return;
  const std::string here(platform::DirectoryOf(session.list.files.front()));
  const auto typed = AskDirectory(
      context.frame, {.title = kMove ? kMoveTitle : kCopyTitle,
                      .prompt = kDestinationPrompt,
                      .start = session.memory.lastDestination.empty() ? here : session.memory.lastDestination});
  if (!typed) return;
  const auto directory = catalogue::TransferDirectory(*typed, session.Images().Directory(), session.Ask());
  if (!directory) return;
  session.memory.lastDestination = *directory;

  RunTransfer(context, kind, *directory, paths);
}

bool TreeIsMeant(CommandContext& context) {
  return context.session.State().treeHasFocus && context.session.mode != ViewMode::Main;
}

/// Where deleted images go by the settings.
DeleteTo UsualDeleteTo(const Session& session) {
  return session.settings.catalogue.recycleDeletedFiles != 0 ? DeleteTo::Trash : DeleteTo::DeletedFolder;
}

void DeleteImages(CommandContext& context, DeleteTo to) {
  auto& session = context.session;
  auto paths = TargetsOf(context, kSelectToDelete);
  if (paths.empty()) return;
  // Kept: several images are always asked for.
  const bool ask = to == DeleteTo::Nowhere || session.settings.catalogue.confirmDelete != 0 || paths.size() > 1;
  if (ask && session.Ask().ask(DeleteQuestion(paths.size(), to)) != platform::Button::Yes) return;
  std::ranges::reverse(paths);
  imagefiles::CompanionFinder companions(session.ImageOptions());
  RunRemoving(context, {.title = std::string(catalogue::kDeleteJob),
                        .progressVerb = "Deleting",
                        .paths = paths,
                        .act = [&](const std::string& path, const ImageJobTools& tools) {
                          catalogue::DeleteImage(
                              path, to,
                              {.companions = companions, .trash = session.Journal().Bin(), .batch = &tools.batch});
                        }});
}

void Delete(CommandContext& context) {
  TreeIsMeant(context) ? DeleteTreeDirectory(context, DeleteTo::Trash)
                       : DeleteImages(context, UsualDeleteTo(context.session));
}

void DeletePermanently(CommandContext& context) {
  TreeIsMeant(context) ? DeleteTreeDirectory(context, DeleteTo::Nowhere) : DeleteImages(context, DeleteTo::Nowhere);
}

void RenameImage(CommandContext& context) {
  auto& session = context.session;
  const int index = session.TargetIndex();
  if (index < 0) return;
  const auto path = session.list.files[static_cast<std::size_t>(index)];
  imagefiles::CompanionFinder companions(session.ImageOptions());
  const auto name = AskNewName(context.frame, std::string(platform::FileName(path)), [&](const std::string& wanted) {
    return catalogue::RefuseNewName(path, wanted, companions);
  });
  if (!name || *name == platform::FileName(path)) return;
  auto& worker = session.Worker();
  const platform::PauseGuard pause(worker);
  platform::EditBatch batch(session.Journal().Edits(), std::string(catalogue::kRenameJob));
  const auto settle = qScopeGuard([&] {
    CommitEdits(context, std::string(catalogue::kRenameJob), batch);
    context.view.NamesChanged();
  });
  worker.RenameOne(path, std::string(platform::DirectoryOf(path)) + *name, catalogue::CaseMode::Unchanged,
                   {.companions = companions, .trash = session.Journal().Bin(), .batch = &batch});
}

void Timestamp(CommandContext& context) {
  auto& session = context.session;
  const auto choice = AskTimestamp(context.frame, session.TargetPaths().empty());
  if (!choice) return;
  const auto paths = choice->all ? session.list.files : session.TargetPaths();
  imagefiles::CompanionFinder companions(session.ImageOptions());
  const auto options = session.ImageOptions();
  std::vector<std::string> failed;
  RunImageJob(context, {.title = std::string(catalogue::kTimestampJob),
                        .progressVerb = "Setting the time of",
                        .paths = paths,
                        .act = [&](const std::string& path, const ImageJobTools& tools) {
                          const auto bad = catalogue::SetTimestamps(
                              {path}, choice->readOnly,
                              {.options = options, .companions = companions, .batch = &tools.batch});
                          failed.insert(failed.end(), bad.begin(), bad.end());
                        }});
  session.FilesChanged({});
  if (failed.empty()) return;
  throw platform::UserError(paths.size() == 1 ? catalogue::UnableToSetTimestamp(failed.front())
                                              : ErrorSettingTimestamps(failed));
}

/// Marks, custom order and the current image go back with their files.
void FollowUndo(Session& session, const platform::JournalEntry& undone) {
  const platform::PauseGuard pause(session.Worker());
  session.list.Rename(catalogue::PathsTakenBack(undone.renames));
}

void Undo(CommandContext& context) {
  auto& session = context.session;
  const auto top = context.view.TopPath();
  const std::set<std::string> listedBefore(session.list.files.begin(), session.list.files.end());
  // Also after a failure: some files may be as they were.
  const auto settle = [&](const std::vector<std::string>& files) {
    session.FilesChanged(files);
    session.Images().RefreshDirectory();
    session.BringBackTags(listedBefore);
    context.view.ScrollToTop(top);
    context.view.RefreshTree();
  };
  platform::JournalEntry undone;
  try {
    const platform::PauseGuard pause(session.Worker());
    platform::ui::RunJob(
        &context.frame, JobLookOf(session, "Undo"), session.Ask(),
        [&](const platform::JobHost&, const std::stop_token&) { undone = session.Journal().Edits().Undo(); });
  } catch (...) {
    settle({});
    throw;
  }
  FollowUndo(session, undone);
  settle(undone.files);
  ShowStatus(context, UndoneText(undone));
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::CopyToFolder, Transfer<TransferKind::Copy>},
    {CommandId::MoveToFolder, Transfer<TransferKind::Move>},
    {CommandId::Delete, Delete},
    {CommandId::DeletePermanently, DeletePermanently},
    {CommandId::RenameImage, RenameImage},
    {CommandId::Timestamp, Timestamp},
    {CommandId::Undo, Undo},
};

}  // namespace

std::span<const HandlerRow> FileHandlers() { return kHandlers; }

}  // namespace ml::app
