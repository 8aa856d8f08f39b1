#include "app/summary_pane.h"

#include <QEvent>

#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

constexpr int kMargin = 8;
constexpr int kLines = 14;

}  // namespace

SummaryPane::SummaryPane(QWidget* parent) : QPlainTextEdit(parent) {
  setAccessibleName(QStringLiteral("Summary"));
  setReadOnly(true);
  setTabChangesFocus(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFrameShape(QFrame::NoFrame);
  setUndoRedoEnabled(false);
  document()->setDocumentMargin(kMargin);
  document()->setDefaultFont(platform::ui::WithTabularFigures(font()));
}

void SummaryPane::SetText(std::string_view text) {
  const QString shown = platform::ui::ToQString(text);
  if (shown != toPlainText()) setPlainText(shown);
}

QSize SummaryPane::sizeHint() const { return {200, 2 * kMargin + kLines * fontMetrics().lineSpacing()}; }

void SummaryPane::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange) document()->setDefaultFont(platform::ui::WithTabularFigures(font()));
}

}  // namespace ml::app
