#include "app/dialogs/timestamp_dialog.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ml::app {

std::optional<TimestampChoice> AskTimestamp(QWidget& parent, bool nothingSelected) {
  QDialog dialog(&parent);
  dialog.setWindowTitle(QStringLiteral("Timestamp"));
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(new QLabel(QStringLiteral("Set the time of each file to the time at which its image was shot.")));
  auto* readOnly = new QCheckBox(QStringLiteral("Mark the files as &read-only"));
  layout->addWidget(readOnly);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  auto* all = buttons->addButton(QStringLiteral("Timestamp &All"), QDialogButtonBox::AcceptRole);
  auto* selected = buttons->addButton(QStringLiteral("Timestamp &Selected"), QDialogButtonBox::AcceptRole);
  selected->setEnabled(!nothingSelected);
  layout->addWidget(buttons);
  (nothingSelected ? all : selected)->setDefault(true);  // a dialog must have the button first
  TimestampChoice choice;
  QObject::connect(all, &QPushButton::clicked, &dialog, [&] { choice.all = true; });
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  choice.readOnly = readOnly->isChecked();
  return choice;
}

}  // namespace ml::app
