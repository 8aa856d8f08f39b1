#include "app/preferences/ui/number_box.h"

#include <QWheelEvent>
#include <algorithm>
#include <cstdint>

namespace ml::app {
namespace {

/// As far as one can type.
constexpr int kFurthest = 9'999'999;
constexpr int kWidthInDigits = 16;

}  // namespace

NumberBox::NumberBox(int smallest, int largest, QWidget* parent)
    : QSpinBox(parent), smallest_(smallest), largest_(largest) {
  setRange(-kFurthest, kFurthest);
  setFocusPolicy(Qt::StrongFocus);
}

void NumberBox::stepBy(int steps) {
  const auto wanted = std::int64_t{value()} + std::int64_t{steps} * singleStep();
  setValue(static_cast<int>(std::clamp<std::int64_t>(wanted, smallest_, largest_)));
  selectAll();
}

/// The range of the toolkit's own hint would take half the window.
QSize NumberBox::sizeHint() const {
  auto hint = QSpinBox::sizeHint();
  hint.setWidth(fontMetrics().averageCharWidth() * kWidthInDigits + hint.height());
  return hint;
}

void NumberBox::wheelEvent(QWheelEvent* event) { hasFocus() ? QSpinBox::wheelEvent(event) : event->ignore(); }

QAbstractSpinBox::StepEnabled NumberBox::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (value() > smallest_) enabled |= StepDownEnabled;
  if (value() < largest_) enabled |= StepUpEnabled;
  return enabled;
}

}  // namespace ml::app
