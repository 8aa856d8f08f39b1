#include "app/theme.h"

#include <QApplication>
#include <QStyle>
#include <array>

#include "app/system_scheme.h"
#include "app/theme_style.h"
#include "platform/ui/accent.h"

namespace ml::app {
namespace {

constexpr QColor Grey(int value) { return {value, value, value}; }

/// One row a role: the greys of both schemes, and those of widgets that are off.
struct GreyRow {
  QPalette::ColorRole role;
  int light, dark;
  int lightOff, darkOff;
};
constexpr std::array kGreys = {
    GreyRow{QPalette::Window, 236, 46, 236, 46},       GreyRow{QPalette::WindowText, 26, 224, 140, 120},
    GreyRow{QPalette::Base, 250, 36, 240, 42},         GreyRow{QPalette::AlternateBase, 243, 41, 238, 44},
    GreyRow{QPalette::Text, 26, 224, 140, 120},        GreyRow{QPalette::PlaceholderText, 100, 150, 140, 120},
    GreyRow{QPalette::Button, 228, 62, 232, 52},       GreyRow{QPalette::ButtonText, 34, 220, 150, 110},
    GreyRow{QPalette::BrightText, 255, 255, 255, 255}, GreyRow{QPalette::Light, 255, 82, 255, 82},
    GreyRow{QPalette::Midlight, 244, 68, 244, 68},     GreyRow{QPalette::Mid, 184, 34, 190, 34},
    GreyRow{QPalette::Dark, 160, 26, 170, 26},         GreyRow{QPalette::Shadow, 110, 12, 130, 12},
    GreyRow{QPalette::ToolTipBase, 250, 62, 250, 62},  GreyRow{QPalette::ToolTipText, 26, 228, 26, 228},
};
constexpr QColor kSelectionOnDark{0x2f, 0x6c, 0xb4};

}  // namespace

QPalette ThemePalette(Scheme scheme) {
  const bool dark = scheme == Scheme::Dark;
  QPalette palette;
  for (const auto& row : kGreys) {
    palette.setColor(row.role, Grey(dark ? row.dark : row.light));
    palette.setColor(QPalette::Disabled, row.role, Grey(dark ? row.darkOff : row.lightOff));
  }
  const QColor accent = dark ? platform::ui::kAccentOnDark : platform::ui::kAccentOnLight;
  palette.setColor(QPalette::Highlight, dark ? kSelectionOnDark : accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, Grey(dark ? 80 : 190));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, Grey(dark ? 160 : 110));
  palette.setColor(QPalette::Link, accent);
  palette.setColor(QPalette::LinkVisited, accent);
  return palette;
}

void ApplyTheme(QApplication& application, Scheme scheme) {
  if (qobject_cast<ThemeStyle*>(application.style()) == nullptr) application.setStyle(new ThemeStyle);
  application.setPalette(ThemePalette(scheme));
}

void ApplyTheme(QApplication& application) {
  const auto* desktop = new SystemScheme(&application);
  QObject::connect(desktop, &SystemScheme::changed, &application,
                   [&application](Scheme scheme) { ApplyTheme(application, scheme); });
  ApplyTheme(application, desktop->Current());
}

QColor PictureGround() {
  const bool dark = qApp->palette().color(QPalette::Window).lightness() < 128;
  return Grey(dark ? 30 : 90);
}

QColor PictureGroundText() { return Grey(235); }

}  // namespace ml::app
