#include "app/file_dialogs.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QGridLayout>

#include "platform/ui/file_filter.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::DialogStart;
using platform::ui::PathFromQt;
using platform::ui::ToQString;

/// Only the toolkit's own dialog can be extended.
QCheckBox* AddCheckBox(QFileDialog& dialog, const OpenFileQuestion& question) {
  if (question.checkText.empty()) return nullptr;
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  auto* box = new QCheckBox(ToQString(question.checkText), &dialog);
  box->setChecked(question.checked);
  if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout())) grid->addWidget(box, grid->rowCount(), 1);
  return box;
}

}  // namespace

std::optional<OpenFileAnswer> OpenFile(QWidget& parent, const OpenFileQuestion& question) {
  QFileDialog dialog(&parent, ToQString(question.title), DialogStart(question.start));
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);  // the patterns are spelt for any case
  const auto* box = AddCheckBox(dialog, question);
  dialog.setNameFilters(platform::ui::NameFilters(question.filter));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return OpenFileAnswer{.path = PathFromQt(dialog.selectedFiles().first()), .checked = box && box->isChecked()};
}

std::optional<std::string> ChooseDirectory(QWidget& parent, const std::string& start) {
  const auto chosen = QFileDialog::getExistingDirectory(&parent, QStringLiteral("Open Directory"), DialogStart(start));
  if (chosen.isEmpty()) return std::nullopt;
  return PathFromQt(chosen);
}

}  // namespace ml::app
