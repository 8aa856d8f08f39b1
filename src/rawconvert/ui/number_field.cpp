#include "rawconvert/ui/number_field.h"

#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "platform/numbers.h"
#include "rawconvert/ui/messages.h"

namespace ml::rawconvert::ui {
namespace {

/// As far as one can type.
constexpr double kFurthest = 999'999;
constexpr int kWidthInDigits = 9;

}  // namespace

NumberField::NumberField(const NumberRange& range, QWidget* parent) : QDoubleSpinBox(parent), range_(range) {
  setRange(-kFurthest, kFurthest);
  setFocusPolicy(Qt::StrongFocus);
  SetLimits(range);
  connect(this, &QDoubleSpinBox::editingFinished, this, &NumberField::KeepGood);
}

void NumberField::SetLimits(const NumberRange& range) {
  const QSignalBlocker quiet(this);
  range_ = range;
  setDecimals(range.decimals);
  setSingleStep(range.step);
}

void NumberField::Show(double number) {
  const QSignalBlocker quiet(this);
  setValue(number);
  KeepGood();
}

void NumberField::KeepGood() {
  if (Complaint().empty()) good_ = value();
}

std::string NumberField::Complaint() const {
  if (value() >= range_.smallest && value() <= range_.largest) return {};
  if (range_.refusal != nullptr) return range_.refusal;
  return messages::NumberFromTo(platform::ShortNumber(range_.smallest), platform::ShortNumber(range_.largest));
}

void NumberField::Restore() { setValue(good_); }

void NumberField::stepBy(int steps) {
  setValue(std::clamp(value() + steps * singleStep(), range_.smallest, range_.largest));
  selectAll();
}

/// The toolkit's own hint would be as wide as the furthest number.
QSize NumberField::sizeHint() const {
  auto hint = QDoubleSpinBox::sizeHint();
  hint.setWidth(fontMetrics().averageCharWidth() * kWidthInDigits + hint.height() * 2);
  return hint;
}

void NumberField::wheelEvent(QWheelEvent* event) { hasFocus() ? QDoubleSpinBox::wheelEvent(event) : event->ignore(); }

QAbstractSpinBox::StepEnabled NumberField::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (value() > range_.smallest) enabled |= StepDownEnabled;
  if (value() < range_.largest) enabled |= StepUpEnabled;
  return enabled;
}

}  // namespace ml::rawconvert::ui
