#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "settings/settings_backend.h"

namespace ml::settings {

/// A settings file in memory. Keeps what it does not understand, comments excepted. A text, or a key, that is no
/// UTF-8 stands in the file as "hex:" and digits, and so does one that itself begins with "hex:".
class TomlDocument final : public SettingsBackend {
 public:
  /// An empty document.
  TomlDocument();
  /// Throws UserError with line and reason if `content` does not parse.
  explicit TomlDocument(std::string_view content);
  ~TomlDocument() override;
  TomlDocument(const TomlDocument&) = delete;
  TomlDocument& operator=(const TomlDocument&) = delete;

  std::optional<int> Integer(const SettingName& name) const override;
  std::optional<std::string> Text(const SettingName& name) const override;
  bool Has(const SettingName& name) const override;
  std::vector<std::string> Keys(std::string_view table) const override;
  void PutInteger(const SettingName& name, int value) override;
  void PutText(const SettingName& name, std::string_view value) override;
  void Remove(const SettingName& name) override;

  /// Whether a value was put or removed that differs from what the document held.
  bool Changed() const { return changed_; }
  /// The whole file.
  std::string Content() const;

 private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
  bool changed_ = false;
};

}  // namespace ml::settings
