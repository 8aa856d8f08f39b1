#pragma once

#include <string>
#include <string_view>

/// The sentences of this module.
namespace ml::settings {

inline std::string UnknownSetting(std::string_view key) { return "Unknown setting: " + std::string(key); }
inline std::string NotAnAssignment(std::string_view text) {
  return "A setting is given as KEY=VALUE, not: " + std::string(text);
}
inline std::string SettingTakes(std::string_view key, std::string_view range) {
  return std::string(key) + " takes " + std::string(range);
}
inline constexpr std::string_view kDwordRange = "a whole number from -2147483648 to 2147483647";
inline constexpr std::string_view kByteRange = "a whole number from 0 to 255";
inline constexpr std::string_view kDecimalRange = "a decimal number";
inline constexpr std::string_view kFontRange = "a font of 120 hexadecimal digits";
inline constexpr std::string_view kTextRange = "at most 511 bytes";
inline std::string SetByHandOnly(std::string_view key) {
  return std::string(key) + " is never written; it can only be set by editing the settings file";
}

inline std::string LineAndReason(unsigned line, std::string_view reason) {
  return "line " + std::to_string(line) + ": " + std::string(reason);
}
/// `reason` from LineAndReason.
inline std::string SettingsDoNotParse(std::string_view path, std::string_view reason) {
  return "The settings file cannot be understood, the defaults are used:\n" + std::string(path) + "\n" +
         std::string(reason);
}
inline std::string SettingsUnreadable(std::string_view path) {
  return "Unable to read the settings file, nothing was saved:\n" + std::string(path);
}
inline std::string SettingsNotKept(std::string_view path) {
  return "Unable to keep the damaged settings file, nothing was saved:\n" + std::string(path);
}

}  // namespace ml::settings
