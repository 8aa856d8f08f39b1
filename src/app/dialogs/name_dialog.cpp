#include "app/dialogs/name_dialog.h"

#include <QDialog>
#include <QLabel>
#include <QVBoxLayout>

#include "platform/ui/byte_line.h"
#include "platform/ui/dialog_buttons.h"

namespace ml::app {

using platform::ui::ToQString;

std::optional<std::string> AskName(QWidget& parent, const NameQuestion& question, const RefuseName& refuse) {
  QDialog dialog(&parent);
  dialog.setObjectName(QStringLiteral("nameDialog"));
  dialog.setWindowTitle(ToQString(question.title));
  auto* layout = new QVBoxLayout(&dialog);
  auto* prompt = new QLabel(platform::ui::ToLabel(question.prompt));
  prompt->setTextFormat(Qt::PlainText);
  layout->addWidget(prompt);
  auto* line = new platform::ui::ByteLine(question.name);
  line->setAccessibleName(prompt->text());
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 44);
  line->selectAll();
  layout->addWidget(line);
  layout->addStretch();
  platform::ui::AddOkAndCancel(dialog, [&] {
    const auto refusal = line->isModified() ? refuse(line->Bytes()) : std::nullopt;
    if (!refusal) return dialog.accept();
    TellRefusal(dialog, *refusal);
    line->setFocus();
  });
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return line->Bytes();
}

}  // namespace ml::app
