#pragma once

#include <string>

#include "settings/settings.h"
#include "settings/settings_io.h"

namespace ml::settings {

/// The file of this program's settings: <company folder>/Marrowlantern/100.toml.
std::string SettingsFilePath();
/// Full path of the companion program as it registered itself, or empty.
std::string CompanionPath();

/// The settings file of one run. Not for several threads at once.
class SettingsStore {
 public:
  explicit SettingsStore(std::string path = SettingsFilePath());

  const std::string& Path() const { return path_; }

  /// The defaults with what the file holds in their place. A file that is missing or cannot be read costs
  /// nothing; if it does not parse, `warning` (otherwise null) gets a sentence for the user.
  Settings Load(std::string* warning = nullptr);

  /// Reads the file again and puts over it what this run changed since Load() or the last Save(); with
  /// SaveScope::Everything also what the file lacks, and "Exe", the path of the running program. Nothing is
  /// written if that changes nothing. A file that does not parse is kept as "100.toml.bad" (".bad1" ..).
  /// Throws UserError if the file cannot be read or replaced; it is then as it was.
  void Save(const Settings& settings, SaveScope scope = SaveScope::Everything);

 private:
  std::string path_;
  Settings loaded_ = MakeDefaultSettings();
};

}  // namespace ml::settings
