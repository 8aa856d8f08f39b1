#include "app/preferences/preference_changes.h"

#include <algorithm>

#include "app/preferences/preference_pages.h"
#include "app/preferences/preference_values.h"

namespace ml::app {
namespace {

bool Same(const PreferenceRow& row, const settings::Settings& a, const settings::Settings& b) {
  return PreferenceValue(row, a) == PreferenceValue(row, b);
}

}  // namespace

Effects EffectsOf(const settings::Settings& before, const settings::Settings& now) {
  Effects effects;
  for (const auto& page : PreferencePages()) {
    for (const auto& row : page.rows) {
      if (!Same(row, before, now)) effects |= row.effects;
    }
  }
  return effects;
}

bool SamePreferences(const settings::Settings& a, const settings::Settings& b) {
  return std::ranges::all_of(PreferencePages(), [&](const auto& page) {
    return std::ranges::all_of(page.rows, [&](const auto& row) { return Same(row, a, b); });
  });
}

void TakePreferences(const settings::Settings& from, settings::Settings& to) {
  for (const auto& page : PreferencePages()) {
    for (const auto& row : page.rows) {
      if (!Same(row, from, to)) SetPreference(row, PreferenceValue(row, from), to);
    }
  }
}

void RestoreDefaults(const PreferencePage& page, settings::Settings& settings) {
  const auto defaults = settings::MakeDefaultSettings();
  for (const auto& row : page.rows) SetPreference(row, PreferenceValue(row, defaults), settings);
}

bool HasDefaults(const PreferencePage& page, const settings::Settings& settings) {
  const auto defaults = settings::MakeDefaultSettings();
  return std::ranges::all_of(page.rows, [&](const auto& row) { return Same(row, settings, defaults); });
}

}  // namespace ml::app
