#include "platform/ui/remark.h"

#include <QLabel>

#include "platform/ui/qt_text.h"

namespace ml::platform::ui {

QLabel* MakeRemark(QWidget* parent) {
  auto* remark = new QLabel(parent);
  remark->setTextFormat(Qt::PlainText);
  remark->setWordWrap(true);
  remark->hide();
  return remark;
}

void SetRemarkText(QLabel& remark, const std::string& text) {
  // A sign before the words, which does not need an eye for colours.
  remark.setText(text.empty() ? QString() : QStringLiteral("\u26a0 ") + ToLabel(text));
  remark.setVisible(!text.empty());
}

}  // namespace ml::platform::ui
