#include "app/theme_style.h"

#include <QPainter>
#include <QStyleOption>

#include "platform/ui/accent.h"
#include "platform/ui/field_frame.h"

namespace ml::app {
namespace {

constexpr double kCornerRadius = 2;

/// Halfway between ground and text: 3 to 1 against the ground in both schemes, less for what is off.
QColor EdgeColour(const QStyleOption& option) {
  const auto ground = option.palette.color(QPalette::Window).lightness();
  const auto text = option.palette.color(QPalette::WindowText).lightness();
  const int grey = (ground + text) / 2;
  return {grey, grey, grey};
}

void DrawEdge(const QStyleOption& option, QPainter& painter, const QColor& colour, double radius = kCornerRadius) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(colour);
  painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  painter.restore();
}

}  // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool field = element == PE_FrameLineEdit && !option->state.testFlag(State_HasFocus);
  if (field || element == PE_IndicatorCheckBox) DrawEdge(*option, *painter, EdgeColour(*option));
  if (element == PE_IndicatorRadioButton) DrawEdge(*option, *painter, EdgeColour(*option), option->rect.width() / 2.0);
  if (element != PE_Frame || !platform::ui::IsField(widget)) return;
  const auto accent = platform::ui::AccentFor(option->palette.color(QPalette::Window));
  DrawEdge(*option, *painter, widget->hasFocus() ? accent : EdgeColour(*option));
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_SpinBox && !option->state.testFlag(State_HasFocus))
    DrawEdge(*option, *painter, EdgeColour(*option));
}

}  // namespace ml::app
