#include "app/preferences/preference_values.h"

#include <algorithm>
#include <stdexcept>

#include "app/preferences/preference_pages.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "settings/setting_list.h"

namespace ml::app {
namespace {

const settings::SettingRow& Stored(std::string_view key) {
  const auto* row = settings::FindSetting(key);
  if (row == nullptr) throw std::logic_error("no setting has the key " + std::string(key));
  return *row;
}

std::string TextOf(const settings::SettingSlot& slot) {
  return std::visit(
      [](const auto* value) -> std::string {
        using Value = std::remove_cvref_t<decltype(*value)>;
        if constexpr (std::is_same_v<Value, std::string>) {
          return *value;
        } else if constexpr (std::is_same_v<Value, platform::FontRecord>) {
          return value->Hex();
        } else if constexpr (std::is_same_v<Value, double>) {
          return platform::ExactNumber(*value);
        } else {
          return std::to_string(*value);
        }
      },
      slot);
}

/// The slot of a value that is only read.
std::string ValueOf(std::string_view key, const settings::Settings& settings) {
  // The table hands out places to write to.
  return TextOf(Stored(key).slot(const_cast<settings::Settings&>(settings)));
}

bool Means(const Choice& choice, std::string_view value) {
  if (platform::EqualsAsciiFolded(choice.value, value)) return true;
  for (auto rest = choice.others; !rest.empty();) {
    const auto end = std::min(rest.find(' '), rest.size());
    if (platform::EqualsAsciiFolded(rest.substr(0, end), value)) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

}  // namespace

std::string PreferenceValue(const PreferenceRow& row, const settings::Settings& settings) {
  return ValueOf(row.key, settings);
}

void SetPreference(const PreferenceRow& row, std::string_view text, settings::Settings& settings) {
  settings::SetSetting(settings, std::string(row.key) + '=' + std::string(text), settings::SettingUse::ThisRun);
}

bool IsOn(std::string_view key, const settings::Settings& settings) { return ValueOf(key, settings) != "0"; }

bool Counts(const PreferenceRow& row, const settings::Settings& settings) { return WhyNot(row, settings).empty(); }

std::string_view WhyNot(const PreferenceRow& row, const settings::Settings& settings) {
  if (row.need.key.empty()) return {};
  if (const auto* above = FindPreference(row.need.key)) {
    if (const auto reason = WhyNot(*above, settings); !reason.empty()) return reason;
  }
  return IsOn(row.need.key, settings) == row.need.on ? std::string_view{} : row.need.reason;
}

std::size_t ChoiceOf(const ChoiceField& field, std::string_view value) {
  const auto found = std::ranges::find_if(field.choices, [&](const auto& choice) { return Means(choice, value); });
  return found == field.choices.end() ? field.otherwise : static_cast<std::size_t>(found - field.choices.begin());
}

}  // namespace ml::app
