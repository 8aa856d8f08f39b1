#pragma once

#include <QIcon>
#include <QString>

namespace ml::platform::ui {

/// An icon in one colour, that of the text of the palette in force when it is painted: it follows light and
/// dark, and is sharp at every size and scale. `name` is a drawing of ours (":/icons/<name>.svg").
QIcon SymbolicIcon(const QString& name);
/// The same out of the desktop's icon theme; null if the theme lacks `themeName`.
QIcon ThemedSymbolicIcon(const QString& themeName);
/// A drawing of ours in its own colours (":/<name>.svg").
QIcon ColouredIcon(const QString& name);

}  // namespace ml::platform::ui
