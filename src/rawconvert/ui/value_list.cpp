#include "rawconvert/ui/value_list.h"

#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "platform/ui/qt_text.h"

namespace ml::rawconvert::ui {
namespace {

constexpr int kWidth = 20;  ///< in characters, so that the lists of a page end below each other

}  // namespace

ValueList::ValueList(std::span<const ValueRow> rows, const std::string& first, QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
  for (const auto& row : rows) addItem(platform::ui::ToQString(row.label), row.value);
  const auto text = platform::ui::ToLabel(first);
  if (count() == 0) setPlaceholderText(text);
  if (count() > 0 && !text.isEmpty()) setItemText(0, text);
}

void ValueList::Show(int value) {
  const QSignalBlocker quiet(this);
  setCurrentIndex(std::max(findData(value), count() > 0 ? 0 : -1));
}

void ValueList::wheelEvent(QWheelEvent* event) { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }

}  // namespace ml::rawconvert::ui
