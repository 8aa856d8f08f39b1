#include "platform/help_page.h"

#include <filesystem>

#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/start_program.h"

namespace ml::platform {

std::string HelpFileName(HelpPage page) {
  switch (page) {
    case HelpPage::Contents:
      break;
    case HelpPage::Preferences:
      return "preferences.htm";
    case HelpPage::Raw:
      return "raw.htm";
    case HelpPage::Html:
      return "html.htm";
    case HelpPage::Rename:
      return "rename.htm";
    case HelpPage::Proofs:
      return "proofs.htm";
    case HelpPage::Printing:
      return "printing.htm";
    case HelpPage::Iptc:
      return "iptc.htm";
  }
  return "Marrowlantern.htm";
}

void OpenHelpPage(HelpPage page) {
  const auto path = JoinPath(JoinPath(programDataDir(), "help"), HelpFileName(page));
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) throw UserError(messages::kUnableToFindHelp + path);
  OpenByDesktop(path);
}

}  // namespace ml::platform
