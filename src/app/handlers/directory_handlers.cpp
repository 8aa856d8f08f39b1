#include <optional>
#include <string>

#include "app/command_runner.h"
#include "app/dialogs/directory_properties.h"
#include "app/dialogs/name_dialog.h"
#include "app/file_messages.h"
#include "app/handlers/tree_directory.h"
#include "app/jobs/image_job.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "catalogue/directory_edits.h"
#include "catalogue/job_names.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/start_program.h"

namespace ml::app {
namespace {

using platform::normaliseDirectory;

std::string Above(const std::string& directory) { return normaliseDirectory(platform::DirectoryOf(directory)); }

/// What of the path on show lies below `directory`: "" for itself; nothing if it lies elsewhere.
std::optional<std::string> OnShowBelow(const Session& session, const std::string& directory) {
  const auto& shown = session.Images().Directory();
  if (shown == directory) return "";
  if (!shown.starts_with(directory + "/")) return std::nullopt;
  return shown.substr(directory.size());
}

/// Goes to the directory above first where the one that changes is on show: its tags and its order are saved as long
/// as it is there. Then `act` runs on a thread of its own, with nobody else at the files. If it fails, the window goes
/// back, so that the next key means the same directory again.
void ChangeDirectory(CommandContext& context, const std::string& directory, std::string_view what,
                     const std::function<void(platform::EditBatch&)>& act) {
  auto& session = context.session;
  const auto shown = session.Images().Directory();
  const auto image = session.list.currentPath;
  const bool leaves = OnShowBelow(session, directory).has_value();
  if (leaves) session.Images().LoadDirectory(Above(directory), "");
  try {
    RunWholeJob(context, {std::string(what), [&](const ImageJobTools& tools) { act(tools.batch); }});
  } catch (...) {
    context.view.RefreshTree();
    if (leaves && platform::IsDirectory(shown)) session.Images().LoadDirectory(shown, image);
    throw;
  }
  context.view.RefreshTree();
}

void NewFolder(CommandContext& context) {
  const auto parent = context.view.TreeDirectory();
  if (parent.empty()) return;
  const auto name =
      AskName(context.frame, {.title = kNewFolderTitle, .prompt = std::string(kNewFolderPrompt), .name = "New Folder"},
              catalogue::RefuseFolderName);
  if (!name) return;
  try {
    const auto made = catalogue::MakeFolder(parent, *name);
    context.view.RefreshTree();
    context.view.SelectInTree(made);
  } catch (const platform::UserError& error) {
    context.session.Ask().message({.text = error.what(), .caption = "Error", .icon = platform::BoxIcon::Error});
  }
}

void RenameFolder(CommandContext& context) {
  const auto directory = context.view.TreeDirectory();
  if (directory.empty()) return;
  const std::string old(platform::FileName(directory));
  const auto name = AskName(context.frame, {.title = kRenameFolderTitle, .prompt = RenamePrompt(old), .name = old},
                            catalogue::RefuseFolderName);
  if (!name || *name == old) return;
  auto& session = context.session;
  const auto shown = OnShowBelow(session, directory);
  const auto image = session.list.currentPath;
  std::string renamed;
  ChangeDirectory(context, directory, kRenameFolderTitle,
                  [&](platform::EditBatch& batch) { renamed = catalogue::RenameDirectory(directory, *name, &batch); });
  if (!shown) return context.view.SelectInTree(renamed);
  const auto same = image.starts_with(directory + "/") ? renamed + image.substr(directory.size()) : "";
  session.Images().LoadDirectory(renamed + *shown, same);
}

void Explore(CommandContext& context) {
  const auto directory = context.view.TreeDirectory();
  if (!directory.empty()) platform::OpenByDesktop(directory);
}

void Properties(CommandContext& context) {
  const auto directory = context.view.TreeDirectory();
  if (!directory.empty()) ShowDirectoryProperties(context.frame, directory);
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::NewFolder, NewFolder},
    {CommandId::RenameFolder, RenameFolder},
    {CommandId::Explore, Explore},
    {CommandId::DirectoryProperties, Properties},
};

}  // namespace

void DeleteTreeDirectory(CommandContext& context, catalogue::DeleteTo to) {
  auto& session = context.session;
  const auto directory = context.view.TreeDirectory();
  if (directory.empty()) return;
  if (session.Ask().ask(DeleteDirectoryQuestion(directory, to)) != platform::Button::Yes) return;
  ChangeDirectory(context, directory, catalogue::kDeleteJob, [&](platform::EditBatch& batch) {
    catalogue::DeleteDirectory(directory, to, session.Journal().Bin(), &batch);
  });
  context.view.SelectInTree(Above(directory));
}

std::span<const HandlerRow> DirectoryHandlers() { return kHandlers; }

}  // namespace ml::app
