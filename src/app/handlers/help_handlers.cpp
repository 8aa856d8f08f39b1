#include "app/command_runner.h"
#include "app/help_dialogs.h"
#include "app/main_frame.h"
#include "platform/help_page.h"

namespace ml::app {
namespace {

void ShowContents(CommandContext&) { platform::OpenHelpPage(platform::HelpPage::Contents); }
void ShowKeys(CommandContext& context) { ShowKeyboardShortcuts(context.frame); }
void About(CommandContext& context) { ShowAbout(context.frame); }

constexpr HandlerRow kHandlers[] = {
    {CommandId::HelpContents, ShowContents},
    {CommandId::KeyboardShortcuts, ShowKeys},
    {CommandId::About, About},
};

}  // namespace

std::span<const HandlerRow> HelpHandlers() { return kHandlers; }

}  // namespace ml::app
