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
  if (element == PE_IndicatorBranch && option->state.testFlag(State_Selected)) {
    QStyleOption branch(*option);
    branch.palette.setColor(QPalette::WindowText, option->palette.color(QPalette::HighlightedText));
    return QProxyStyle::drawPrimitive(element, &branch, painter, widget);
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool field = element == PE_FrameLineEdit && !option->state.testFlag(State_HasFocus);
  if (field || element == PE_IndicatorCheckBox) DrawEdge(*option, *painter, EdgeColour(*option));
  if (element == PE_IndicatorRadioButton) DrawEdge(*option, *painter, EdgeColour(*option), option->rect.width() / 2.0);
  if (element != PE_Frame || !platform::ui::IsField(widget)) return;
  const auto accent = platform::ui::AccentFor(option->palette.color(QPalette::Window));
  DrawEdge(*option, *painter, widget->hasFocus() ? accent : EdgeColour(*option));
}

void ThemeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  const bool lit = element == CE_MenuItem && item != nullptr && item->state.testFlag(State_Selected) &&
                   item->state.testFlag(State_Enabled) && !item->icon.isNull();
  if (!lit || item->checked) return QProxyStyle::drawControl(element, option, painter, widget);  // marks have a box
  QStyleOptionMenuItem own(*item);
  const int edge = pixelMetric(PM_SmallIconSize, option, widget);
  own.icon = QIcon(item->icon.pixmap({edge, edge}, painter->device()->devicePixelRatioF(), QIcon::Selected));
  QProxyStyle::drawControl(element, &own, painter, widget);
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_SpinBox && !option->state.testFlag(State_HasFocus))
    DrawEdge(*option, *painter, EdgeColour(*option));
}

}  // namespace ml::app
