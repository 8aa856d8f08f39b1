#pragma once

#include <QIcon>
#include <QString>

namespace ml::app {

/// The icon of a command by its freedesktop name ("go-up"), or by our own name where there is none
/// ("view-main"); null for a name that has no drawing. Follows light and dark, sharp at 20, 24 and every
/// scale. The desktop's symbolic icons are taken only if its theme has every one of them: drawings of two
/// hands do not go together.
QIcon CommandIcon(const QString& name);
/// The program's own.
QIcon ApplicationIcon();

}  // namespace ml::app
