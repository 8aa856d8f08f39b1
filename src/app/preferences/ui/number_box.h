#pragma once

#include <QSpinBox>

namespace ml::app {

/// A number field that keeps what is typed, also where it lies outside the range, so that the form can tell what is
/// wrong with it; its arrows stay inside. The wheel turns it only while it has the focus: pages scroll by the wheel.
class NumberBox final : public QSpinBox {
  Q_OBJECT

 public:
  NumberBox(int smallest, int largest, QWidget* parent);
  void stepBy(int steps) override;
  QSize sizeHint() const override;

 protected:
  void wheelEvent(QWheelEvent* event) override;
  StepEnabled stepEnabled() const override;

 private:
  int smallest_, largest_;
};

}  // namespace ml::app
