#include "app/help_dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QMessageBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/command_runner.h"
#include "platform/ui/field_label.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;
using platform::ui::WithoutMnemonic;

QString NativeKeys(std::string_view keys) {
  const auto list = QKeySequence::listFromString(ToQString(keys), QKeySequence::PortableText);
  return QKeySequence::listToString(list, QKeySequence::NativeText).replace(QStringLiteral("; "), QStringLiteral(", "));
}

void AddRow(QTableWidget& table, const QString& keys, const QString& place, const QString& effect) {
  const int row = table.rowCount();
  table.insertRow(row);
  int column = 0;
  for (const auto& text : {keys, place, effect}) table.setItem(row, column++, new QTableWidgetItem(text));
}

QTableWidget* MakeTable(QWidget* parent) {
  auto* table = new QTableWidget(0, 3, parent);
  table->setAccessibleName(QStringLiteral("Keyboard shortcuts"));
  table->setHorizontalHeaderLabels({QStringLiteral("Keys"), QStringLiteral("Place"), QStringLiteral("Effect")});
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setTabKeyNavigation(false);
  table->verticalHeader()->hide();
  for (const auto& row : Commands()) {
    if (row.keys.empty() || !HasHandler(row.id)) continue;
    AddRow(*table, NativeKeys(row.keys), WithoutMnemonic(MenuTitle(row.menu)), WithoutMnemonic(row.text));
  }
  for (const auto& row : PaneKeys()) {
    AddRow(*table, ToQString(row.keys).replace(QStringLiteral("; "), QStringLiteral(", ")), ToQString(row.pane),
           ToQString(row.effect));
  }
  table->resizeColumnsToContents();
  table->horizontalHeader()->setStretchLastSection(true);
  return table;
}

}  // namespace

void ShowKeyboardShortcuts(QWidget& parent) {
  QDialog dialog(&parent);
  dialog.setWindowTitle(QStringLiteral("Keyboard Shortcuts"));
  dialog.resize(820, 600);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(MakeTable(&dialog));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout->addWidget(buttons);
  dialog.exec();
}

void ShowAbout(QWidget& parent) {
  QMessageBox::about(&parent, QStringLiteral("About Marrowlantern"),
                     QStringLiteral("Marrowlantern %1\n\nAn image browser for photographers who shoot raw.")
                         .arg(QApplication::applicationVersion()));
}

}  // namespace ml::app
