#include "platform/ui/accent.h"

#include <algorithm>
#include <cmath>

namespace ml::platform::ui {
namespace {

double Linear(int channel) {
  const double value = channel / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

}  // namespace

double RelativeLuminance(const QColor& colour) {
  return 0.2126 * Linear(colour.red()) + 0.7152 * Linear(colour.green()) + 0.0722 * Linear(colour.blue());
}

double ContrastRatio(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({RelativeLuminance(a), RelativeLuminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor AccentFor(const QColor& background) {
  const bool light = ContrastRatio(background, kAccentOnLight) >= ContrastRatio(background, kAccentOnDark);
  return light ? kAccentOnLight : kAccentOnDark;
}

}  // namespace ml::platform::ui
