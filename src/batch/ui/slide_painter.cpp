#include "batch/ui/slide_painter.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>
#include <cmath>

#include "batch/slideshow_caption.h"
#include "catalogue/ui/thumbnail_marks.h"
#include "imaging/ui/pixel_image.h"
#include "platform/text.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

constexpr QColor kText(160, 160, 0);
constexpr QColor kTagMark(255, 214, 0);
/// From the edges of the picture.
constexpr int kTagOffset = 2;
constexpr int kTagSize = 24;
/// So that text and tag are seen on a picture of any colour.
constexpr double kOutline = 3;
constexpr int kTextMargin = 16;

QString ShownLine(const std::string& line) { return platform::ui::ToQString(platform::ToDisplayLine(line)); }

/// In logical pixels, on whole pixels of the screen.
QRectF PlaceOf(const imaging::PixelBuffer& pixels, const QRectF& room, double ratio) {
  QSizeF size = QSizeF(pixels.width, pixels.height) / ratio;
  if (size.width() > room.width() + 0.5 || size.height() > room.height() + 0.5) {
    size.scale(room.size(), Qt::KeepAspectRatio);  // made for a larger screen or a shorter caption
  }
  const auto onPixel = [&](double value) { return std::floor(value * ratio) / ratio; };
  return {QPointF(onPixel(room.x() + (room.width() - size.width()) / 2),
                  onPixel(room.y() + (room.height() - size.height()) / 2)),
          size};
}

void PaintPicture(QPainter& painter, const imaging::PixelBuffer& pixels, const QRectF& place, double ratio) {
  QImage image = imaging::ui::WrapPixels(pixels);
  if (std::abs(place.width() * ratio - pixels.width) < 0.5) {
    image.setDevicePixelRatio(ratio);
    return painter.drawImage(place.topLeft(), image);
  }
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, image);
}

void PaintTag(QPainter& painter, const QPointF& corner) {
  const QRectF box(corner + QPointF(kTagOffset, kTagOffset), QSizeF(kTagSize, kTagSize));
  for (const double x : {-1.0, 0.0, 1.0}) {
    for (const double y : {-1.0, 0.0, 1.0}) {
      catalogue::ui::DrawTagMark(painter, box.translated(x, y), Qt::black);
    }
  }
  catalogue::ui::DrawTagMark(painter, box, kTagMark);
}

/// Each line in the middle, the first one at `top`.
void PaintLines(QPainter& painter, const std::vector<std::string>& lines, int count, const QRect& room, int top) {
  const QFontMetrics metrics(painter.font());
  const int height = CaptionLineHeight(painter.font());
  painter.setRenderHint(QPainter::Antialiasing);
  for (int i = 0; i < count; ++i) {
    const auto text = metrics.elidedText(ShownLine(lines[static_cast<std::size_t>(i)]), Qt::ElideRight,
                                         room.width() - 2 * kTextMargin);
    const int x = room.x() + (room.width() - metrics.horizontalAdvance(text)) / 2;
    const QPoint baseline(x, top + i * height + metrics.ascent());
    QPainterPath outline;
    outline.addText(baseline, painter.font(), text);
    painter.strokePath(outline, QPen(Qt::black, kOutline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setPen(kText);
    painter.drawText(baseline, text);
  }
}

}  // namespace

int CaptionLineHeight(const QFont& font) {
  return QFontMetrics(font).size(Qt::TextSingleLine, QStringLiteral("Ly/QT")).height() + 1;
}

void PaintSlide(QPainter& painter, const QWidget& widget, const SlideContent& content) {
  const QRect screen = widget.rect();
  const int height = CaptionLineHeight(painter.font());
  const int count = LinesThatFit(content.lines->size(), screen.height(), height);
  if (content.picture == nullptr || content.picture->main.Empty()) {
    return PaintLines(painter, *content.lines, count, screen, screen.y() + (screen.height() - count * height) / 2);
  }
  const auto& pixels = content.picture->main;
  const double ratio = widget.devicePixelRatioF();
  const QRect room = content.captionBelow ? screen.adjusted(0, 0, 0, -count * height) : screen;
  const QRectF place = PlaceOf(pixels, room, ratio);
  PaintPicture(painter, pixels, place, ratio);
  if (content.tagged) PaintTag(painter, place.topLeft());
  PaintLines(painter, *content.lines, count, screen, screen.y() + screen.height() - count * height);
}

}  // namespace ml::batch::ui
