#pragma once

class QWidget;

namespace ml::platform::ui {
class ByteLine;
}

namespace ml::app {

/// Wide enough for a path or a text with tokens.
platform::ui::ByteLine* MakeTextLine(QWidget* parent);
/// `field` takes the width that `button` leaves.
QWidget* SideBySide(QWidget* field, QWidget* button, QWidget* parent);

}  // namespace ml::app
