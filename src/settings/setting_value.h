#pragma once

#include "settings/setting_table.h"
#include "settings/settings_backend.h"

/// One value between its slot and a backend.
namespace ml::settings {

/// A stored text of this many bytes or more is not read.
inline constexpr std::size_t kTextLimit = 512;

/// A text that is short enough to be read.
std::optional<std::string> ReadText(const SettingsBackend& backend, const SettingName& name);

/// Takes an integer as the row admits it. The slot must be of a number kind.
void AssignInteger(const SettingRow& row, const SettingSlot& slot, int value);

/// Replaces the value by the stored one, or leaves it if that is missing, too long or of another type.
void ReadValue(const SettingsBackend& backend, const SettingRow& row, Settings& settings);
void WriteValue(SettingsBackend& backend, const SettingRow& row, Settings& settings);
/// Whether both hold the same value, bit for bit.
bool SameValue(const SettingRow& row, Settings& a, Settings& b);

}  // namespace ml::settings
