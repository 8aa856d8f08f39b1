#include "settings/settings_io.h"

#include <utility>

#include "platform/text.h"
#include "settings/setting_table.h"
#include "settings/setting_value.h"

namespace ml::settings {

namespace {

constexpr std::string_view kProfiles = "Profiles";
constexpr std::string_view kSelectedModel = "Model";
constexpr std::string_view kDialogs = "Dialogs";
constexpr std::string_view kLinearPrefix = "L:";
constexpr std::string_view kNormalPrefix = "N:";

struct WindowRow {
  std::string_view key;
  std::optional<int> WindowSettings::*value;
};
constexpr WindowRow kWindowRows[] = {
    {"WindowLeft", &WindowSettings::left},
    {"WindowTop", &WindowSettings::top},
    {"WindowRight", &WindowSettings::right},
    {"WindowBottom", &WindowSettings::bottom},
};
constexpr std::string_view kWindowZoomed = "WindowZoomed";
constexpr std::string_view kWindowState = "WindowState";

std::string RecentKey(std::size_t index) { return "MRU" + std::to_string(index); }

void ReadWindow(const SettingsBackend& backend, WindowSettings& window) {
  for (const auto& row : kWindowRows) {
    if (const auto stored = backend.Integer({row.key})) window.*row.value = *stored;
  }
  if (const auto stored = backend.Integer({kWindowZoomed})) window.zoomed = *stored;
  if (const auto stored = backend.Text({kWindowState})) platform::FromHex(*stored, window.state);
}

void ReadRecentDirectories(const SettingsBackend& backend, RecentDirectories& recent) {
  RecentDirectories stored;
  for (std::size_t i = 0; i < kMaxRecentDirectories; ++i) {
    auto directory = ReadText(backend, {RecentKey(i)});
    if (directory && !directory->empty()) stored.push_back(std::move(*directory));
  }
  if (!stored.empty()) recent = std::move(stored);
}

void ReadProfiles(const SettingsBackend& backend, ProfileTable& profiles) {
  for (const auto& key : backend.Keys(kProfiles)) {
    const SettingName name{key, kProfiles};
    const auto model = [&] { return key.substr(kLinearPrefix.size()); };
    if (key.starts_with(kLinearPrefix)) {
      if (auto path = ReadText(backend, name)) profiles.linear[model()] = std::move(*path);
    } else if (key.starts_with(kNormalPrefix)) {
      if (auto path = ReadText(backend, name)) profiles.normal[model()] = std::move(*path);
    } else if (const auto number = backend.Integer(name)) {
      (key == kSelectedModel ? profiles.selectedModel : profiles.flags[key]) = *number;
    }
  }
}

void ReadDialogPlaces(const SettingsBackend& backend, DialogPlaces& places) {
  for (const auto& name : backend.Keys(kDialogs)) {
    const auto stored = backend.Text({name, kDialogs});
    if (std::string place; stored && platform::FromHex(*stored, place)) places[name] = std::move(place);
  }
}

/// Decides value by value what a save may touch.
class Overlay {
 public:
  Overlay(SettingsBackend& backend, SaveScope scope) : backend_(backend), scope_(scope) {}

  bool Wants(const SettingName& name, bool changed) const {
    return changed || (scope_ == SaveScope::Everything && !backend_.Has(name));
  }
  void Integer(const SettingName& name, std::optional<int> value, std::optional<int> loaded) {
    if (value && Wants(name, value != loaded)) backend_.PutInteger(name, *value);
  }
  void Text(const SettingName& name, const std::string& value, const std::string& loaded) {
    if (Wants(name, value != loaded)) backend_.PutText(name, value);
  }

 private:
  SettingsBackend& backend_;
  SaveScope scope_;
};

void WriteRows(Settings settings, Settings loaded, const Overlay& overlay, SaveScope scope, SettingsBackend& backend) {
  for (const auto& group : SettingGroups()) {
    for (const auto& row : group.rows) {
      if (row.stored == Stored::ReadOnly) continue;
      // A value that is never read did not come from the store: what this run has got is the newer one.
      const bool always = row.stored == Stored::WriteOnly && scope == SaveScope::Everything;
      const bool changed = always || !SameValue(row, settings, loaded);
      if (overlay.Wants({row.key}, changed)) WriteValue(backend, row, settings);
    }
  }
}

void WriteRecentDirectories(const RecentDirectories& recent, const RecentDirectories& loaded,
                            SettingsBackend& backend) {
  if (recent == loaded) return;
  for (std::size_t i = 0; i < kMaxRecentDirectories; ++i) {
    if (i < recent.size()) {
      backend.PutText({RecentKey(i)}, recent[i]);
    } else {
      backend.Remove({RecentKey(i)});
    }
  }
}

void WriteProfilePaths(std::string_view prefix, const std::map<std::string, std::string>& paths,
                       const std::map<std::string, std::string>& loaded, Overlay& overlay) {
  for (const auto& [model, path] : paths) {
    const std::string key = std::string(prefix) + model;
    const auto before = loaded.find(model);
    overlay.Text({key, kProfiles}, path, before == loaded.end() ? std::string() : before->second);
  }
}

void WriteProfiles(const ProfileTable& profiles, const ProfileTable& loaded, Overlay& overlay) {
  WriteProfilePaths(kLinearPrefix, profiles.linear, loaded.linear, overlay);
  WriteProfilePaths(kNormalPrefix, profiles.normal, loaded.normal, overlay);
  for (const auto& [model, flags] : profiles.flags) {
    const auto before = loaded.flags.find(model);
    overlay.Integer({model, kProfiles}, flags, before == loaded.flags.end() ? 0 : before->second);
  }
  overlay.Integer({kSelectedModel, kProfiles}, profiles.selectedModel, loaded.selectedModel);
}

void WriteDialogPlaces(const DialogPlaces& places, const DialogPlaces& loaded, Overlay& overlay) {
  for (const auto& [name, place] : places) {
    const auto before = loaded.find(name);
    overlay.Text({name, kDialogs}, platform::ToHex(place),
                 before == loaded.end() ? std::string() : platform::ToHex(before->second));
  }
}

}  // namespace

void ReadSettings(const SettingsBackend& backend, Settings& settings) {
  for (const auto& group : SettingGroups()) {
    for (const auto& row : group.rows) {
      if (row.stored != Stored::WriteOnly) ReadValue(backend, row, settings);
    }
  }
  ReadWindow(backend, settings.window);
  ReadRecentDirectories(backend, settings.recentDirectories);
  ReadProfiles(backend, settings.profiles);
  ReadDialogPlaces(backend, settings.dialogPlaces);
}

void WriteSettings(const Settings& settings, const Settings& loaded, SaveScope scope, SettingsBackend& backend) {
  Overlay overlay(backend, scope);
  WriteRows(settings, loaded, overlay, scope, backend);
  for (const auto& row : kWindowRows) {
    overlay.Integer({row.key}, settings.window.*row.value, loaded.window.*row.value);
  }
  overlay.Integer({kWindowZoomed}, settings.window.zoomed, loaded.window.zoomed);
  overlay.Text({kWindowState}, platform::ToHex(settings.window.state), platform::ToHex(loaded.window.state));
  WriteRecentDirectories(settings.recentDirectories, loaded.recentDirectories, backend);
  WriteProfiles(settings.profiles, loaded.profiles, overlay);
  WriteDialogPlaces(settings.dialogPlaces, loaded.dialogPlaces, overlay);
}

}  // namespace ml::settings
