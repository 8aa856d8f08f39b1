#include "platform/ui/qt_interaction.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <array>
#include <type_traits>

#include "platform/ui/file_filter.h"
#include "platform/ui/messages.h"
#include "platform/ui/qt_text.h"

namespace ml::platform::ui {
namespace {

template <class Act>
auto OnWindowThread(Act&& act) -> std::invoke_result_t<Act> {
  auto* app = QCoreApplication::instance();
  if (QThread::currentThread() == app->thread()) return act();
  std::invoke_result_t<Act> result{};
  QMetaObject::invokeMethod(
      app, [&] { result = act(); }, Qt::BlockingQueuedConnection);
  return result;
}

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Warning:
      return QMessageBox::Warning;
    case BoxIcon::Error:
      return QMessageBox::Critical;
    case BoxIcon::Question:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return QMessageBox::Ok;
    case Buttons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

/// What closing the box by Escape means is the most careful answer that it offers.
Button AnswerOf(int pressed, Buttons offered) {
  switch (pressed) {
    case QMessageBox::Ok:
      return Button::Ok;
    case QMessageBox::Yes:
      return Button::Yes;
    case QMessageBox::No:
      return Button::No;
    default:
      return offered == Buttons::YesNo ? Button::No : offered == Buttons::Ok ? Button::Ok : Button::Cancel;
  }
}

/// Fills `dialog`: file names in `box.text` are shown as they stand, whatever they contain.
void Prepare(QMessageBox& dialog, const MessageBox& box) {
  dialog.setTextFormat(Qt::PlainText);
  dialog.setText(ToQString(box.text));
  dialog.setWindowTitle(ToQString(box.caption));
  dialog.setIcon(IconOf(box.icon));
  dialog.setStandardButtons(ButtonsOf(box.buttons));
}

std::optional<std::string> RunSaveAs(QWidget* parent, const Interaction::SaveAsQuestion& question) {
  QFileDialog dialog(parent, ToQString(question.title));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(NameFilters(question.filter));
  dialog.setDefaultSuffix(ToQString(question.defaultExtension));
  const QString start = DialogStart(question.start);
  if (QFileInfo(start).isDir()) {
    dialog.setDirectory(start);
  } else {
    dialog.setDirectory(QFileInfo(start).path());
    dialog.selectFile(QFileInfo(start).fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return PathFromQt(dialog.selectedFiles().constFirst());
}

/// Skipping is what Return does: nothing is overwritten by a hasty key.
FileExistsAnswer RunFileExists(QWidget* parent, const std::string& path) {
  struct Choice {
    const char* text;
    FileExistsAnswer answer;
    QMessageBox::ButtonRole role;
  };
  static constexpr std::array kChoices = {
      Choice{"Save &As...", FileExistsAnswer::SaveAs, QMessageBox::ActionRole},
      Choice{"&Overwrite", FileExistsAnswer::Overwrite, QMessageBox::ActionRole},
      Choice{"O&verwrite All", FileExistsAnswer::OverwriteAll, QMessageBox::ActionRole},
      Choice{"S&kip All", FileExistsAnswer::SkipAll, QMessageBox::ActionRole},
      Choice{"&Skip", FileExistsAnswer::Skip, QMessageBox::ActionRole},
      Choice{"Cancel", FileExistsAnswer::Cancel, QMessageBox::RejectRole}};
  QMessageBox dialog(parent);
  Prepare(dialog, {.text = FileExistsQuestion(path), .caption = kFileExistsCaption, .icon = BoxIcon::Question});
  dialog.setStandardButtons(QMessageBox::NoButton);
  std::array<QAbstractButton*, kChoices.size()> buttons{};
  for (std::size_t i = 0; i < kChoices.size(); ++i) {
    auto* button = dialog.addButton(QLatin1String(kChoices[i].text), kChoices[i].role);
    if (kChoices[i].answer == FileExistsAnswer::Skip) dialog.setDefaultButton(button);
    if (kChoices[i].answer == FileExistsAnswer::Cancel) dialog.setEscapeButton(button);
    buttons[i] = button;
  }
  dialog.exec();
  for (std::size_t i = 0; i < kChoices.size(); ++i) {
    if (dialog.clickedButton() == buttons[i]) return kChoices[i].answer;
  }
  return FileExistsAnswer::Cancel;
}

}  // namespace

void QtInteraction::message(const MessageBox& box) {
  MessageBox told = box;
  told.buttons = Buttons::Ok;
  static_cast<void>(ask(told));
}

Button QtInteraction::ask(const MessageBox& box) {
  return OnWindowThread([&] {
    QMessageBox dialog(parent_);
    Prepare(dialog, box);
    return AnswerOf(dialog.exec(), box.buttons);
  });
}

Interaction::CheckedAnswer QtInteraction::askCheck(const MessageBox& box, const std::string& checkText) {
  return OnWindowThread([&] {
    QMessageBox dialog(parent_);
    Prepare(dialog, box);
    auto* check = new QCheckBox(ToQString(checkText), &dialog);
    dialog.setCheckBox(check);
    const auto button = AnswerOf(dialog.exec(), box.buttons);
    return CheckedAnswer{button, check->isChecked()};
  });
}

std::optional<std::string> QtInteraction::saveAs(const SaveAsQuestion& question) {
  return OnWindowThread([&] { return RunSaveAs(parent_, question); });
}

FileExistsAnswer QtInteraction::fileExists(const std::string& path) {
  return OnWindowThread([&] { return RunFileExists(parent_, path); });
}

}  // namespace ml::platform::ui
