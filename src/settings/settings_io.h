#pragma once

#include "settings/settings.h"
#include "settings/settings_backend.h"

/// All settings between memory and a backend. Apart from the rows of the table these are the window's place
/// ("WindowLeft" .. "WindowZoomed") and state ("WindowState"), the recent directories ("MRU0" .. "MRU7") and the
/// tables "Profiles" and "Dialogs".
namespace ml::settings {

/// What a save puts into a store that lacks a value which this run did not change.
enum class SaveScope { Everything, ChangesOnly };

/// Replaces each value that the backend holds in its right form; the others stay as they are.
void ReadSettings(const SettingsBackend& backend, Settings& settings);

/// Writes what differs from `loaded`, what `settings` was at the start of this run. Other values that the
/// backend holds stay as they are: another running copy, or a user, put them there.
void WriteSettings(const Settings& settings, const Settings& loaded, SaveScope scope, SettingsBackend& backend);

}  // namespace ml::settings
