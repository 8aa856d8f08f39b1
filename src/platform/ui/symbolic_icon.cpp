#include "platform/ui/symbolic_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <array>
#include <functional>
#include <memory>
#include <utility>

/// A static library's resources are only known once somebody asks for them; the macro wants no namespace.
static void MakeDrawingsKnown() { Q_INIT_RESOURCE(resources); }

namespace ml::platform::ui {
namespace {

QColor InkFor(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  switch (mode) {
    case QIcon::Disabled:
      return palette.color(QPalette::Disabled, QPalette::ButtonText);
    case QIcon::Selected:
      return palette.color(QPalette::Active, QPalette::HighlightedText);
    default:
      return palette.color(QPalette::Active, QPalette::ButtonText);
  }
}

/// A shape whose opacity alone matters, filled with the ink of the moment.
class SymbolicEngine final : public QIconEngine {
 public:
  using Shape = std::function<void(QPainter&, const QRect&)>;
  explicit SymbolicEngine(Shape shape) : shape_(std::move(shape)) {}

  QIconEngine* clone() const override { return new SymbolicEngine(*this); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double ratio = painter->device()->devicePixelRatioF();
    QPixmap picture = pixmap(rect.size() * ratio, mode, state);
    picture.setDevicePixelRatio(ratio);
    painter->drawPixmap(rect.topLeft(), picture);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    if (size.isEmpty()) return {};
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    const int edge = qMin(size.width(), size.height());
    QPainter painter(&picture);
    shape_(painter, QRect((size.width() - edge) / 2, (size.height() - edge) / 2, edge, edge));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), InkFor(mode));
    return picture;
  }

 private:
  Shape shape_;
};

constexpr std::array kProgramIconSizes = {16, 24, 32, 48, 64, 128, 256};

}  // namespace

QIcon SymbolicIcon(const QString& name) {
  MakeDrawingsKnown();
  const auto drawing = std::make_shared<QSvgRenderer>(QStringLiteral(":/icons/%1.svg").arg(name));
  Q_ASSERT(drawing->isValid());
  return QIcon(new SymbolicEngine([drawing](QPainter& painter, const QRect& box) { drawing->render(&painter, box); }));
}

QIcon ThemedSymbolicIcon(const QString& themeName) {
  if (!QIcon::hasThemeIcon(themeName)) return {};
  const QIcon themed = QIcon::fromTheme(themeName);
  return QIcon(new SymbolicEngine(
      [themed](QPainter& painter, const QRect& box) { painter.drawPixmap(box, themed.pixmap(box.size(), 1.0)); }));
}

QIcon ColouredIcon(const QString& name) {
  MakeDrawingsKnown();
  QSvgRenderer drawing(QStringLiteral(":/%1.svg").arg(name));
  Q_ASSERT(drawing.isValid());
  QIcon icon;
  for (const int edge : kProgramIconSizes) {
    QPixmap picture(edge, edge);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace ml::platform::ui
