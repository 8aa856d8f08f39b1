#include "app/dialogs/rename_dialog.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/paths.h"
#include "platform/ui/byte_line.h"
#include "platform/ui/dialog_buttons.h"
#include "platform/ui/qt_text.h"

namespace ml::app {

using platform::ui::ToQString;

std::optional<std::string> AskNewName(QWidget& parent, const std::string& oldName, const RefuseName& refuse) {
  QDialog dialog(&parent);
  dialog.setWindowTitle(QStringLiteral("Rename Image"));
  auto* layout = new QVBoxLayout(&dialog);
  auto* prompt = new QLabel(QStringLiteral("Rename '%1' to:").arg(ToQString(oldName)));
  prompt->setTextFormat(Qt::PlainText);
  layout->addWidget(prompt);
  auto* row = new QHBoxLayout;
  layout->addLayout(row);
  const auto parts = platform::SplitPath(oldName);
  auto* stem = new platform::ui::ByteLine(std::string(parts.stem));
  stem->setAccessibleName(QStringLiteral("Name"));
  stem->setMinimumWidth(stem->fontMetrics().averageCharWidth() * 44);
  auto* extension = new platform::ui::ByteLine(std::string(parts.extension));
  extension->setAccessibleName(QStringLiteral("Extension"));
  extension->setFixedWidth(extension->fontMetrics().averageCharWidth() * 10);
  row->addWidget(stem);
  row->addWidget(extension);
  std::string name;
  platform::ui::AddOkAndCancel(dialog, [&] {
    name = stem->Bytes() + extension->Bytes();
    const auto refusal = name == oldName ? std::nullopt : refuse(name);
    if (!refusal) return dialog.accept();
    TellRefusal(dialog, *refusal);
    stem->setFocus();
  });
  stem->selectAll();
  stem->setFocus();
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return name;
}

}  // namespace ml::app
