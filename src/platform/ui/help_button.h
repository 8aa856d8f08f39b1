#pragma once

#include "platform/help_page.h"

class QDialog;
class QPushButton;
class QWidget;

namespace ml::platform::ui {

/// Shows the page in the desktop's browser; a box over `parent` tells why it cannot.
void ShowHelpPage(HelpPage page, QWidget& parent);

/// A button "Help" for a dialog, to be placed by its maker; F1 presses it anywhere in the dialog. The dialog owns it.
QPushButton* MakeHelpButton(HelpPage page, QDialog& dialog);

}  // namespace ml::platform::ui
