#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

#include "cli/commands.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "cli/setting_option.h"
#include "settings/messages.h"
#include "settings/setting_table.h"
#include "settings/settings_store.h"

namespace ml::cli {
namespace {

struct SettingsArguments {
  std::vector<std::string> get, put;
  bool dryRun = false;

  /// Whether the user wants to see `key`: all, if none was named.
  bool Wants(std::string_view key) const {
    const auto names = [key](const std::string& text) { return text.substr(0, text.find('=')) == key; };
    return (get.empty() && put.empty()) || std::ranges::any_of(get, names) || std::ranges::any_of(put, names);
  }
};

Json JsonOf(const settings::SettingValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return JsonText(*text);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  return std::get<std::int32_t>(value);
}

void Put(const SettingsArguments& arguments, RunState& state) {
  // Goes into the stored values, so that an override of this run is not kept by accident.
  settings::SettingsStore store;
  auto stored = store.Load();
  for (const auto& assignment : arguments.put) {
    AssignSetting(stored, assignment, settings::SettingUse::Persist);
    AssignSetting(state.settings, assignment, settings::SettingUse::ThisRun);
  }
  if (!arguments.dryRun) store.Save(stored, settings::SaveScope::ChangesOnly);
}

void RunSettings(const SettingsArguments& arguments, RunState& state) {
  for (const auto& key : arguments.get) {
    if (settings::FindSetting(key) == nullptr) throw WrongUsage(settings::UnknownSetting(key));
  }
  if (!arguments.put.empty()) Put(arguments, state);
  auto result = Json::array();
  for (const auto& entry : settings::ListSettings(state.settings)) {
    if (!arguments.Wants(entry.key)) continue;
    if (!state.json) PrintLine(std::string(entry.key) + " = " + settings::SettingText(entry.value));
    result.push_back({{"key", entry.key},
                      {"type", settings::SettingTypeName(entry.type)},
                      {"default", JsonOf(entry.defaultValue)},
                      {"value", JsonOf(entry.value)}});
  }
  if (state.json) PrintJson(result);
}

}  // namespace

void AddSettingsCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("settings", "Show the settings, or change them for good");
  auto arguments = std::make_shared<SettingsArguments>();
  command->add_option("--get", arguments->get, "Only these keys");
  command->add_option("--put", arguments->put, "KEY=VALUE, kept for later runs");
  command->add_flag("--dry-run", arguments->dryRun, "Do not keep what is put");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunSettings(*arguments, state); }; });
}

}  // namespace ml::cli
