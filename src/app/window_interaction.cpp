#include "app/window_interaction.h"

#include <cstdio>

#include "platform/ui/qt_interaction.h"

namespace ml::app {

using platform::ui::QtInteraction;

namespace {

void PrintError(const platform::MessageBox& box) { std::fprintf(stderr, "marrowlantern: %s\n", box.text.c_str()); }

}  // namespace

void WindowInteraction::message(const platform::MessageBox& box) {
  silent_ ? PrintError(box) : QtInteraction(parent_).message(box);
}

platform::Button WindowInteraction::ask(const platform::MessageBox& box) {
  if (!silent_) return QtInteraction(parent_).ask(box);
  if (box.icon == platform::BoxIcon::Error) PrintError(box);
  return platform::Button::Cancel;
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
