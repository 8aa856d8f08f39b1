#include "rawconvert/ui/value_list.h"

#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "platform/ui/qt_text.h"

namespace ml::rawconvert::ui {

ValueList::ValueList(std::span<const ValueRow> rows, const std::string& first, QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  for (const auto& row : rows) addItem(platform::ui::ToQString(row.label), row.value);
  if (!first.empty() && count() > 0) setItemText(0, platform::ui::ToLabel(first));
}

void ValueList::Show(int value) {
  const QSignalBlocker quiet(this);
  setCurrentIndex(std::max(findData(value), count() > 0 ? 0 : -1));
}

void ValueList::wheelEvent(QWheelEvent* event) { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }

}  // namespace ml::rawconvert::ui
