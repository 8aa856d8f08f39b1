#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "settings/setting_table.h"

/// Settings by name, for scripts.
namespace ml::settings {

/// Number kinds as integers, decimals as doubles, texts and fonts (120 digits) as text.
using SettingValue = std::variant<std::int32_t, double, std::string>;

struct SettingEntry {
  std::string_view key;
  SettingType type;
  SettingValue defaultValue, value;
};

/// "dword", "byte", "string", "decimal" or "font".
std::string_view SettingTypeName(SettingType type);
std::string SettingText(const SettingValue& value);

/// All settings that are read, in the order of the table.
std::vector<SettingEntry> ListSettings(const Settings& settings);

/// Whether a setting is for this run only or goes into the store.
enum class SettingUse { ThisRun, Persist };

/// Sets one value from "KEY=VALUE". Throws UserError, and leaves the settings alone, if there is no such key, the
/// value does not suit its type, or it is to persist and its key is never written.
void SetSetting(Settings& settings, std::string_view assignment, SettingUse use);

}  // namespace ml::settings
