#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "platform/interaction.h"

namespace ml::platform::ui {

/// Asks the user by boxes over a window. Callable from any thread: a call from another one waits until the
/// window's thread has the answer, so that thread must not wait for the caller meanwhile.
class QtInteraction final : public Interaction {
 public:
  /// `parent` may die first; boxes then have no parent.
  explicit QtInteraction(QWidget* parent) : parent_(parent) {}

  void message(const MessageBox& box) override;
  [[nodiscard]] Button ask(const MessageBox& box) override;
  [[nodiscard]] CheckedAnswer askCheck(const MessageBox& box, const std::string& checkText) override;
  [[nodiscard]] std::optional<std::string> saveAs(const SaveAsQuestion& question) override;
  [[nodiscard]] FileExistsAnswer fileExists(const std::string& path) override;

 private:
  QPointer<QWidget> parent_;
};

}  // namespace ml::platform::ui
