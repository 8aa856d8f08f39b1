#pragma once

#include "app/preferences/effects.h"
#include "app/preferences/preference_row.h"
#include "settings/settings.h"

namespace ml::app {

/// What has to be done when `now` takes the place of `before`; settings that the Preferences do not offer count not.
Effects EffectsOf(const settings::Settings& before, const settings::Settings& now);

bool SamePreferences(const settings::Settings& a, const settings::Settings& b);
/// Copies what the Preferences offer; everything else in `to` stays.
void TakePreferences(const settings::Settings& from, settings::Settings& to);

void RestoreDefaults(const PreferencePage& page, settings::Settings& settings);
bool HasDefaults(const PreferencePage& page, const settings::Settings& settings);

}  // namespace ml::app
