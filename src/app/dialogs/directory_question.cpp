#include "app/dialogs/directory_question.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/file_dialogs.h"
#include "platform/ui/byte_line.h"
#include "platform/ui/dialog_buttons.h"
#include "platform/ui/qt_text.h"

namespace ml::app {

using platform::ui::ToQString;

std::optional<std::string> AskDirectory(QWidget& parent, const DirectoryQuestion& question) {
  QDialog dialog(&parent);
  dialog.setWindowTitle(ToQString(question.title));
  auto* layout = new QVBoxLayout(&dialog);
  auto* prompt = new QLabel(ToQString(question.prompt));
  layout->addWidget(prompt);
  auto* row = new QHBoxLayout;
  layout->addLayout(row);
  auto* line = new platform::ui::ByteLine(question.start);
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 60);
  line->setAccessibleName(prompt->text());
  line->selectAll();
  row->addWidget(line);
  auto* browse = new QPushButton(QStringLiteral("&Browse..."));
  browse->setAutoDefault(false);
  row->addWidget(browse);
  QObject::connect(browse, &QPushButton::clicked, &dialog, [&] {
    if (const auto chosen = ChooseDirectory(dialog, line->Bytes())) line->SetBytes(*chosen);
  });
  platform::ui::AddOkAndCancel(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return line->Bytes();
}

}  // namespace ml::app
