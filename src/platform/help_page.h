#pragma once

#include <array>
#include <string>

namespace ml::platform {

/// A page of the manual.
enum class HelpPage { Contents, Preferences, Raw, Html, Rename, Proofs, Printing, Iptc };

inline constexpr std::array kHelpPages{HelpPage::Contents, HelpPage::Preferences, HelpPage::Raw,      HelpPage::Html,
                                       HelpPage::Rename,   HelpPage::Proofs,      HelpPage::Printing, HelpPage::Iptc};

/// Name of the page's file, which lies in the folder `help` of programDataDir().
std::string HelpFileName(HelpPage page);

/// Shows the page in the desktop's browser. Throws UserError if the page is missing or no browser can be started.
void OpenHelpPage(HelpPage page);

}  // namespace ml::platform
