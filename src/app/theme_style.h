#pragma once

#include <QProxyStyle>

namespace ml::app {

/// The toolkit's own drawing, with an edge around fields, check boxes and radio buttons that is seen on light and
/// dark grounds: without it, an unchecked box all but vanishes on a dark one. Branches and icons of chosen rows get the
/// colour of the text there.
class ThemeStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  ThemeStyle();
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};

}  // namespace ml::app
