#pragma once

#include <QColor>

namespace ml::platform::ui {

/// The one colour of the chrome: focus and selection. Two shades, each at least 3 to 1 against the
/// backgrounds it is meant for.
inline constexpr QColor kAccentOnLight{0x1b, 0x5f, 0xaa};
inline constexpr QColor kAccentOnDark{0x6a, 0xab, 0xf0};

/// 0 (black) .. 1 (white), as the contrast formula of the web accessibility guidelines weighs it.
double RelativeLuminance(const QColor& colour);
/// 1 .. 21
double ContrastRatio(const QColor& a, const QColor& b);
/// The shade that stands out from `background`.
QColor AccentFor(const QColor& background);

}  // namespace ml::platform::ui
