#pragma once

class QAbstractScrollArea;
class QWidget;

namespace ml::platform::ui {

/// Marks a list or a text as a field of a form: the theme draws an edge around it that is seen on any ground, in the
/// accent while it has the keyboard.
void MarkAsField(QAbstractScrollArea& area);
/// `widget` may be null.
bool IsField(const QWidget* widget);

}  // namespace ml::platform::ui
