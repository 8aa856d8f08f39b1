#pragma once

class QWidget;

namespace ml::app {

/// The page of all keys, made from the command table.
void ShowKeyboardShortcuts(QWidget& parent);
/// Name and version.
void ShowAbout(QWidget& parent);

}  // namespace ml::app
