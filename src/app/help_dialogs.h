#pragma once

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace ml::app {

/// The page of all keys, made from the command table.
void ShowKeyboardShortcuts(QWidget& parent);
/// Name and version.
void ShowAbout(QWidget& parent);

}  // namespace ml::app
