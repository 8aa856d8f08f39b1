#pragma once

#include <QComboBox>
#include <span>
#include <string>

#include "rawconvert/value_tables.h"

namespace ml::rawconvert::ui {

/// A list of the values of one setting.
class ValueList final : public QComboBox {
 public:
  /// `first`, unless it is empty, is shown for the first value, or in a list without values.
  ValueList(std::span<const ValueRow> rows, const std::string& first, QWidget* parent = nullptr);

  /// The first one of the list if there is no such value. Without telling.
  void Show(int value);
  int Value() const { return currentData().toInt(); }

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace ml::rawconvert::ui
