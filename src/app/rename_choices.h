#pragma once

#include "batch/ui/rename_form.h"
#include "settings/groups/rename_settings.h"

namespace ml::app {

/// What the settings remember of the last batch, for the dialog.
batch::ui::RenameChoices RenameChoicesOf(const settings::RenameSettings& settings);
/// And back.
void TakeRenameChoices(const batch::ui::RenameChoices& choices, settings::RenameSettings& settings);

}  // namespace ml::app
