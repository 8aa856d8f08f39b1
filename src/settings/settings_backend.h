#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ml::settings {

/// The name of a stored value: a key at the top, or in a table below it.
struct SettingName {
  std::string_view key;
  std::string_view table = {};
};

/// Named integers and texts: a file, or a map in tests. Texts are any bytes.
class SettingsBackend {
 public:
  virtual ~SettingsBackend() = default;

  /// Nothing if there is no such value, it is of another type, or no signed number of 32 bits.
  virtual std::optional<int> Integer(const SettingName& name) const = 0;
  /// Nothing if there is no such value or it is of another type.
  virtual std::optional<std::string> Text(const SettingName& name) const = 0;
  /// Whether there is a value of that name, readable or not.
  virtual bool Has(const SettingName& name) const = 0;
  /// The keys of a table; empty if there is none.
  virtual std::vector<std::string> Keys(std::string_view table) const = 0;

  /// Both replace a value of any type.
  virtual void PutInteger(const SettingName& name, int value) = 0;
  virtual void PutText(const SettingName& name, std::string_view value) = 0;
  virtual void Remove(const SettingName& name) = 0;
};

}  // namespace ml::settings
