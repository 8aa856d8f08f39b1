#include "app/command_runner.h"
#include "app/file_dialogs.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

void OpenDirectory(CommandContext& context) {
  const auto directory = ChooseDirectory(context.frame, context.session.Images().Directory());
  if (directory) context.session.Images().LoadDirectory(*directory, "");
}

void ParentDirectory(CommandContext& context) {
  const auto parent = platform::normaliseDirectory(platform::DirectoryOf(context.session.Images().Directory()));
  context.session.Images().LoadDirectory(parent, "");
}

void Refresh(CommandContext& context) {
  const auto top = context.view.TopPath();
  context.session.Images().RefreshDirectory();
  context.view.ScrollToTop(top);
  context.view.RefreshTree();
}

void RecentDirectory(CommandContext& context) {
  const auto& recent = context.session.settings.recentDirectories;
  const auto place = static_cast<std::size_t>(context.argument);
  if (place >= recent.size()) return;
  const auto directory = recent[place];  // a copy: loading rearranges the list
  context.session.Images().LoadDirectory(directory, "");
}

void Quit(CommandContext& context) { context.frame.close(); }

constexpr HandlerRow kHandlers[] = {
    {CommandId::OpenDirectory, OpenDirectory},
    {CommandId::ParentDirectory, ParentDirectory},
    {CommandId::RefreshDirectory, Refresh},
    {CommandId::RecentDirectory, RecentDirectory},
    {CommandId::Quit, Quit},
};

}  // namespace

std::span<const HandlerRow> CatalogueHandlers() { return kHandlers; }

}  // namespace ml::app
