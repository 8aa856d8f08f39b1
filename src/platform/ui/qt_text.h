#pragma once

#include <QFont>
#include <QString>
#include <string>
#include <string_view>

namespace ml::platform::ui {

/// Bytes for display: valid UTF-8 as it is, everything else as Windows-1252. Not a way back to the bytes.
QString ToQString(std::string_view bytes);
/// The same on one line: control characters, which a name may hold, become blanks.
QString ToLabel(std::string_view bytes);
/// Where a file dialog begins that is to begin at `path`: the first directory above where the toolkit cannot name it.
QString DialogStart(std::string_view path);
/// What the toolkit gave as a file name, as bytes.
std::string PathFromQt(const QString& path);
/// `text` for a tool tip: shown as it stands, never read as markup. Empty for an empty text.
QString PlainToolTip(const QString& text);
/// `font` if its digits all have one width, else a font of the same size whose digits do: numbers that
/// change in place must not jump.
QFont WithTabularFigures(const QFont& font);

}  // namespace ml::platform::ui
