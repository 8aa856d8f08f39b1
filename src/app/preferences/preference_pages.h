#pragma once

#include <span>

#include "app/preferences/preference_row.h"

namespace ml::app {

/// In the order of the window.
std::span<const PreferencePage> PreferencePages();

/// The row of `key`; null if the Preferences do not offer it.
const PreferenceRow* FindPreference(std::string_view key);

}  // namespace ml::app
