#pragma once

#include <QString>
#include <string>

class QLineEdit;
class QWidget;

namespace ml::app {

/// Wide enough for a path or a text with tokens.
QLineEdit* MakeTextLine(QWidget* parent);
/// `field` takes the width that `button` leaves.
QWidget* SideBySide(QWidget* field, QWidget* button, QWidget* parent);

}  // namespace ml::app
