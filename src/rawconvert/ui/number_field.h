#pragma once

#include <QDoubleSpinBox>
#include <string>

namespace ml::rawconvert::ui {

struct NumberRange {
  double smallest, largest;
  int decimals = 0;
  double step = 1;
  const char* refusal = nullptr;  ///< of a value outside; null for a sentence that tells the range
};

/// A field for a number. Keeps what is typed, also where it lies outside the range, so that the dialog can tell what is
/// wrong with it; its arrows stay inside. The wheel turns it only while it has the focus.
class NumberField final : public QDoubleSpinBox {
 public:
  explicit NumberField(const NumberRange& range, QWidget* parent = nullptr);

  void SetLimits(const NumberRange& range);
  /// Without telling.
  void Show(double number);
  int Whole() const { return static_cast<int>(value()); }
  /// What is wrong with the value; empty if nothing is.
  std::string Complaint() const;
  /// Back to the last value that was shown or entered and is in the range.
  void Restore();

  void stepBy(int steps) override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void wheelEvent(QWheelEvent* event) override;
  StepEnabled stepEnabled() const override;

 private:
  void KeepGood();

  NumberRange range_;
  double good_ = 0;
};

}  // namespace ml::rawconvert::ui
