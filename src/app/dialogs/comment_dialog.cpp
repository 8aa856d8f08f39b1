#include "app/dialogs/comment_dialog.h"

#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTextDocument>
#include <QVBoxLayout>

#include "platform/ui/dialog_buttons.h"
#include "platform/ui/qt_text.h"

namespace ml::app {

using platform::ui::ToQString;

std::optional<std::string> EditComment(QWidget& parent, const std::string& name, const std::string& comment) {
  QDialog dialog(&parent);
  dialog.setWindowTitle(QStringLiteral("Edit Comments"));
  auto* layout = new QVBoxLayout(&dialog);
  auto* label = new QLabel(ToQString(name));
  label->setTextFormat(Qt::PlainText);
  layout->addWidget(label);
  auto* text = new QPlainTextEdit(ToQString(comment));
  text->setAccessibleName(QStringLiteral("Comment"));
  text->setTabChangesFocus(true);
  text->selectAll();
  text->document()->setModified(false);
  layout->addWidget(text);
  platform::ui::AddOkAndCancel(dialog);
  auto* done = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Return")), &dialog);
  QObject::connect(done, &QShortcut::activated, &dialog, &QDialog::accept);
  dialog.resize(text->fontMetrics().averageCharWidth() * 64, text->fontMetrics().height() * 14);
  text->setFocus();
  if (dialog.exec() != QDialog::Accepted || !text->document()->isModified()) return std::nullopt;
  return text->toPlainText().toStdString();
}

}  // namespace ml::app
