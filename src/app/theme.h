#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace ml::app {

enum class Scheme { Light, Dark };

/// Greys without hue: colour is judged on them. The accent stands for focus and selection alone.
QPalette ThemePalette(Scheme scheme);
/// Style and palette of the whole program.
void ApplyTheme(QApplication& application, Scheme scheme);
/// The same in the scheme of the desktop, and again whenever that changes. To be called once.
void ApplyTheme(QApplication& application);

/// The ground around a picture, darker than mid-grey in both schemes, and text on it.
QColor PictureGround();
QColor PictureGroundText();

}  // namespace ml::app
