#pragma once

#include "app/preferences/preference_row.h"

class QLineEdit;
class QPushButton;
class QWidget;

namespace ml::app {

/// A button with a menu of all tokens of format strings, which puts the chosen one into `line`.
QPushButton* MakeTokenButton(QLineEdit* line, TextForm form, QWidget* parent);

}  // namespace ml::app
