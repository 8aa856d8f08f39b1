#pragma once

#include <string>
#include <string_view>

#include "app/preferences/preference_row.h"
#include "settings/settings.h"

/// The values of the rows, all as text: a number in decimal digits, a flag "0" for off.
namespace ml::app {

std::string PreferenceValue(const PreferenceRow& row, const settings::Settings& settings);
/// Nothing is checked but what the store demands. Throws UserError, and changes nothing, if it cannot hold `text`.
void SetPreference(const PreferenceRow& row, std::string_view text, settings::Settings& settings);

/// Whether the flag `key` is on.
bool IsOn(std::string_view key, const settings::Settings& settings);
/// Whether the row counts, also through the rows that its need depends on.
bool Counts(const PreferenceRow& row, const settings::Settings& settings);
/// Why it does not count; empty if it does.
std::string_view WhyNot(const PreferenceRow& row, const settings::Settings& settings);

/// The place in `field.choices` that a stored value means.
std::size_t ChoiceOf(const ChoiceField& field, std::string_view value);

}  // namespace ml::app
