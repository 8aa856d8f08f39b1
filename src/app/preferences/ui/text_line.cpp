#include "app/preferences/ui/text_line.h"

#include <QHBoxLayout>

#include "platform/ui/byte_line.h"

namespace ml::app {
namespace {

constexpr int kTextWidthInCharacters = 20;

}  // namespace

platform::ui::ByteLine* MakeTextLine(QWidget* parent) {
  auto* line = new platform::ui::ByteLine({}, parent);
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * kTextWidthInCharacters);
  return line;
}

QWidget* SideBySide(QWidget* field, QWidget* button, QWidget* parent) {
  auto* whole = new QWidget(parent);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(field, 1);
  layout->addWidget(button);
  return whole;
}

}  // namespace ml::app
