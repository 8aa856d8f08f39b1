#pragma once

#include <QPointer>
#include <QWidget>
#include <atomic>

#include "platform/interaction.h"

namespace ml::app {

/// Asks by boxes over the main window, which may come later and go earlier. Once silenced, for an end that
/// nobody may hold up, it asks no more: messages go to standard error, questions are answered by Cancel.
class WindowInteraction final : public platform::Interaction {
 public:
  void SetParent(QWidget* parent) { parent_ = parent; }
  void Silence(bool on) { silent_ = on; }

  void message(const platform::MessageBox& box) override;
  [[nodiscard]] platform::Button ask(const platform::MessageBox& box) override;
  [[nodiscard]] CheckedAnswer askCheck(const platform::MessageBox& box, const std::string& checkText) override;
  [[nodiscard]] std::optional<std::string> saveAs(const SaveAsQuestion& question) override;
  [[nodiscard]] platform::FileExistsAnswer fileExists(const std::string& path) override;

 private:
  QPointer<QWidget> parent_;
  std::atomic<bool> silent_ = false;
};

}  // namespace ml::app
