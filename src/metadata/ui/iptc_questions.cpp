#include "metadata/ui/iptc_questions.h"

#include <QMessageBox>
#include <QPushButton>

#include "metadata/ui/messages.h"
#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {
namespace {

/// Over the sheet, with Cancel; names of files are shown as they stand.
class Question {
 public:
  Question(const std::string& text, QWidget* parent) : box_(parent) {
    box_.setIcon(QMessageBox::Question);
    box_.setWindowTitle(QStringLiteral("Marrowlantern"));
    box_.setTextFormat(Qt::PlainText);
    box_.setText(platform::ui::ToQString(text));
  }
  QPushButton* Add(const char* text, QMessageBox::ButtonRole role) { return box_.addButton(QLatin1String(text), role); }
  /// What was pressed; Cancel is none of those added before.
  const QAbstractButton* Run(QPushButton* usual) {
    box_.setEscapeButton(Add("Cancel", QMessageBox::RejectRole));
    box_.setDefaultButton(usual);
    box_.exec();
    return box_.clickedButton();
  }

 private:
  QMessageBox box_;
};

bool AskYes(const std::string& text, const char* yes, QWidget* parent) {
  Question question(text, parent);
  auto* button = question.Add(yes, QMessageBox::AcceptRole);
  return question.Run(button) == button;
}

}  // namespace

ChangesAnswer AskAboutChanges(const std::string& path, QWidget* parent) {
  Question question(ApplyChanges(path), parent);
  auto* apply = question.Add("&Apply", QMessageBox::AcceptRole);
  const auto* discard = question.Add("&Discard", QMessageBox::DestructiveRole);
  const auto* pressed = question.Run(apply);
  if (pressed == apply) return ChangesAnswer::Apply;
  return pressed == discard ? ChangesAnswer::Discard : ChangesAnswer::Cancel;
}

bool AskToReplace(const std::string& path, QWidget* parent) { return AskYes(ReplaceByFile(path), "&Replace", parent); }

bool AskToWrite(std::size_t count, QWidget* parent) { return AskYes(WriteInto(count), "&Write", parent); }

}  // namespace ml::metadata::ui
