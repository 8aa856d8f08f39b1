#include "app/window_interaction.h"

#include <cstdio>

#include "platform/ui/qt_interaction.h"

namespace ml::app {

using platform::ui::QtInteraction;

void WindowInteraction::message(const platform::MessageBox& box) {
  if (silent_) {
    std::fprintf(stderr, "marrowlantern: %s\n", box.text.c_str());
    return;
  }
  QtInteraction(parent_).message(box);
}

platform::Button WindowInteraction::ask(const platform::MessageBox& box) {
  return silent_ ? platform::Button::Cancel : QtInteraction(parent_).ask(box);
}

platform::Interaction::CheckedAnswer WindowInteraction::askCheck(const platform::MessageBox& box,
                                                                 const std::string& checkText) {
  return silent_ ? CheckedAnswer{} : QtInteraction(parent_).askCheck(box, checkText);
}

std::optional<std::string> WindowInteraction::saveAs(const SaveAsQuestion& question) {
  return silent_ ? std::nullopt : QtInteraction(parent_).saveAs(question);
}

platform::FileExistsAnswer WindowInteraction::fileExists(const std::string& path) {
  return silent_ ? platform::FileExistsAnswer::Cancel : QtInteraction(parent_).fileExists(path);
}

}  // namespace ml::app
