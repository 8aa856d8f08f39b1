#include "app/preferences/ui/search_line.h"

#include <QKeyEvent>

namespace ml::app {

SearchLine::SearchLine(QWidget* parent) : QLineEdit(parent) {
  setPlaceholderText(QStringLiteral("Search settings"));
  setAccessibleName(QStringLiteral("Search settings"));
  setToolTip(QStringLiteral("Return goes to the next setting found, Down into its field (Ctrl+F)"));
  setClearButtonEnabled(true);
}

void SearchLine::keyPressEvent(QKeyEvent* event) {
  const bool searching = !text().isEmpty();
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (searching) Q_EMIT stepWanted(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
      return;
    case Qt::Key_Down:
      if (searching) Q_EMIT answerWanted();
      return;
    case Qt::Key_Escape:
      if (!searching) break;
      clear();
      return;
    default:
      break;
  }
  QLineEdit::keyPressEvent(event);
}

}  // namespace ml::app
