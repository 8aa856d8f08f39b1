#include "platform/ui/help_button.h"

#include <QDialog>
#include <QPushButton>
#include <QShortcut>

#include "platform/errors.h"
#include "platform/ui/qt_interaction.h"

namespace ml::platform::ui {

void ShowHelpPage(HelpPage page, QWidget& parent) {
  try {
    OpenHelpPage(page);
  } catch (const UserError& error) {
    QtInteraction(&parent).message({.text = error.what(), .icon = BoxIcon::Error});
  }
}

QPushButton* MakeHelpButton(HelpPage page, QDialog& dialog) {
  auto* button = new QPushButton(QStringLiteral("Help"), &dialog);
  button->setAutoDefault(false);
  button->setToolTip(QStringLiteral("Shows the page of the manual (F1)"));
  QObject::connect(button, &QPushButton::clicked, &dialog, [page, &dialog] { ShowHelpPage(page, dialog); });
  QObject::connect(new QShortcut(QKeySequence(Qt::Key_F1), &dialog), &QShortcut::activated, button,
                   &QPushButton::click);
  return button;
}

}  // namespace ml::platform::ui
