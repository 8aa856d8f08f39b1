#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/delete_files.h"
#include "catalogue/job_names.h"
#include "catalogue/messages.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

using catalogue::DeleteTo;

struct DeleteArguments {
  std::vector<std::string> files;
  bool trash = false, toDeleted = false, permanent = false, yes = false, dryRun = false;
};

DeleteTo Where(const DeleteArguments& arguments, const RunState& state) {
  if (arguments.permanent) return DeleteTo::Nowhere;
  if (arguments.trash) return DeleteTo::Trash;
  const bool recycle = state.settings.catalogue.recycleDeletedFiles != 0;
  return recycle && !arguments.toDeleted ? DeleteTo::Trash : DeleteTo::DeletedFolder;
}

const char* DoneWord(DeleteTo to) {
  if (to == DeleteTo::Nowhere) return catalogue::kDeletedForGood;
  return to == DeleteTo::Trash ? "moved to the trash" : "moved to the directory \"Deleted\"";
}

EditOutcome DeleteOne(const GivenImage& image, DeleteTo to, ImageSession& session) {
  auto& companions = session.Tools().companions;
  EditOutcome outcome{.changed = true};
  for (const auto& file : companions.Find(image.path).PathsToDelete()) {
    outcome.files.push_back(platform::JoinPath(platform::DirectoryOf(image.given), platform::FileName(file)));
  }
  if (session.DryRun()) return outcome;
  catalogue::DeleteImage(image.path, to, {.companions = companions, .trash = session.Bin(), .batch = &session.Batch()});
  return outcome;
}

void RunDelete(const DeleteArguments& arguments, RunState& state) {
  const auto to = Where(arguments, state);
  // Several images are always asked for.
  const bool mayStay =
      to == DeleteTo::Nowhere || state.settings.catalogue.confirmDelete != 0 || arguments.files.size() > 1;
  const bool refused = mayStay && !arguments.yes && !arguments.dryRun;
  RunEdits(arguments.files,
           {.what = catalogue::kDeleteJob,
            .done = DoneWord(to),
            .dryRun = arguments.dryRun,
            .files = ResultFiles::Told,
            .edit =
                [&](const GivenImage& image, ImageSession& session) {
                  if (refused) throw platform::UserError(image.given + ": not deleted; choose --yes");
                  return DeleteOne(image, to, session);
                }},
           state);
}

}  // namespace

void AddDeleteCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("delete", "Delete images with what goes with them, as the settings say");
  auto arguments = std::make_shared<DeleteArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  auto* trash = command->add_flag("--trash", arguments->trash, "Into the trash");
  auto* deleted = command->add_flag("--to-deleted", arguments->toDeleted, "Into the directory \"Deleted\" beside them");
  auto* permanent = command->add_flag("--permanent", arguments->permanent, "For good; this cannot be undone");
  trash->excludes(deleted)->excludes(permanent);
  deleted->excludes(permanent);
  command->add_flag("--yes", arguments->yes, "Delete what would be asked for: several images, or for good");
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be deleted");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunDelete(*arguments, state); }; });
}

}  // namespace ml::cli
