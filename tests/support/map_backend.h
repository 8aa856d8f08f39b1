#pragma once

#include <map>
#include <utility>
#include <variant>

#include "settings/settings_backend.h"

namespace ml::test {

/// Stored values in memory.
class MapBackend final : public settings::SettingsBackend {
 public:
  using Value = std::variant<int, std::string>;
  std::map<std::pair<std::string, std::string>, Value> values;  ///< by table and key

  std::optional<int> Integer(const settings::SettingName& name) const override { return Get<int>(name); }
  std::optional<std::string> Text(const settings::SettingName& name) const override { return Get<std::string>(name); }
  bool Has(const settings::SettingName& name) const override { return values.contains(Place(name)); }
  std::vector<std::string> Keys(std::string_view table) const override {
    std::vector<std::string> keys;
    for (const auto& [place, value] : values) {
      if (place.first == table) keys.push_back(place.second);
    }
    return keys;
  }
  void PutInteger(const settings::SettingName& name, int value) override { values[Place(name)] = value; }
  void PutText(const settings::SettingName& name, std::string_view value) override {
    values[Place(name)] = std::string(value);
  }
  void Remove(const settings::SettingName& name) override { values.erase(Place(name)); }

 private:
  static std::pair<std::string, std::string> Place(const settings::SettingName& name) {
    return {std::string(name.table), std::string(name.key)};
  }
  template <class T>
  std::optional<T> Get(const settings::SettingName& name) const {
    const auto found = values.find(Place(name));
    if (found == values.end() || !std::holds_alternative<T>(found->second)) return std::nullopt;
    return std::get<T>(found->second);
  }
};

}  // namespace ml::test
