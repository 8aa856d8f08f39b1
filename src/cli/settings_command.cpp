#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "cli/commands.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "platform/errors.h"
#include "settings/setting_table.h"
#include "settings/setting_text.h"
#include "settings/settings_store.h"

namespace ml::cli {
namespace {

struct SettingsArguments {
  std::vector<std::string> get, put;
  bool dryRun = false;
};

Json ValueOf(const settings::SettingSlot& slot) {
  return std::visit(
      [](const auto* value) -> Json {
        using T = std::remove_cvref_t<decltype(*value)>;
        if constexpr (std::is_same_v<T, platform::FontRecord>) {
          return value->Hex();
        } else if constexpr (std::is_same_v<T, std::string>) {
          return JsonText(*value);
        } else {
          return *value;
        }
      },
      slot);
}

void PutSettings(const SettingsArguments& arguments, RunState& state) {
  // What is put is put into the stored values: an override of this run must not be kept by accident.
  auto stored = settings::MakeDefaultSettings();
  settings::SettingsStore store;
  if (const auto warning = store.Load(stored); !warning.empty()) Complain(warning);
  for (const auto& text : arguments.put) {
    settings::PutSettingText(stored, text);
    settings::PutSettingText(state.settings, text);
  }
  if (!arguments.dryRun) store.Save(stored);
}

void PrintSettings(const SettingsArguments& arguments, RunState& state) {
  auto defaults = settings::MakeDefaultSettings();
  auto result = Json::array();
  for (const auto& group : settings::SettingGroups()) {
    for (const auto& row : group.rows) {
      const auto wanted = [&](const std::string& text) { return text.substr(0, text.find('=')) == row.key; };
      const bool all = arguments.get.empty() && arguments.put.empty();
      if (!all && std::ranges::none_of(arguments.get, wanted) && std::ranges::none_of(arguments.put, wanted)) continue;
      const auto slot = row.slot(state.settings);
      result.push_back({{"key", row.key},
                        {"type", settings::SettingTypeName(settings::TypeOf(slot))},
                        {"default", ValueOf(row.slot(defaults))},
                        {"value", ValueOf(slot)}});
      const auto value = ValueOf(slot);
      if (!state.json) {
        PrintLine(std::string(row.key) + " = " + (value.is_string() ? value.get<std::string>() : value.dump()));
      }
    }
  }
  if (state.json) PrintJson(result);
}

void RunSettings(const SettingsArguments& arguments, RunState& state) {
  for (const auto& key : arguments.get) {
    if (settings::FindSetting(key) == nullptr) throw platform::UserError("no such setting: " + key);
  }
  if (!arguments.put.empty()) PutSettings(arguments, state);
  PrintSettings(arguments, state);
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
