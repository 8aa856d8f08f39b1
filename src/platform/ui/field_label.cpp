#include "platform/ui/field_label.h"

#include <QLabel>

#include "platform/ui/qt_text.h"

namespace ml::platform::ui {

QString WithoutMnemonic(std::string_view text) { return ToQString(text).remove(QLatin1Char('&')); }

QLabel* MakeFieldLabel(std::string_view text, QWidget& field, QWidget* parent) {
  auto* label = new QLabel(ToQString(text), parent);
  label->setBuddy(&field);
  auto name = WithoutMnemonic(text);
  if (name.endsWith(QLatin1Char(':'))) name.chop(1);
  field.setAccessibleName(name);
  return label;
}

}  // namespace ml::platform::ui
