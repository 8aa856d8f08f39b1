#include "catalogue/ui/thumbnail_marks.h"

#include <QPainter>
#include <QPainterPath>
#include <functional>

namespace ml::catalogue::ui {
namespace {

constexpr double kCrossSize = 80;
constexpr double kCrossWidth = 10;

/// Lets `draw` work on a grid of 12 by 12.
void OnGrid(QPainter& painter, const QRectF& box, const std::function<void()>& draw) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(box.topLeft());
  painter.scale(box.height() / 12, box.height() / 12);
  draw();
  painter.restore();
}

QPen Stroke(const QColor& colour) { return {colour, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin}; }

}  // namespace

void DrawTagMark(QPainter& painter, const QRectF& box, const QColor& colour) {
  OnGrid(painter, box, [&] {
    QPainterPath label;
    label.moveTo(1.5, 1.5);
    label.lineTo(6.2, 1.5);
    label.lineTo(11, 6.3);
    label.lineTo(6.3, 11);
    label.lineTo(1.5, 6.2);
    label.closeSubpath();
    QPainterPath hole;
    hole.addEllipse(QPointF(4, 4), 1.2, 1.2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPath(label.subtracted(hole));
  });
}

void DrawSoundMark(QPainter& painter, const QRectF& box, const QColor& colour) {
  OnGrid(painter, box, [&] {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({{1, 4.2}, {3.2, 4.2}, {6.2, 1.5}, {6.2, 10.5}, {3.2, 7.8}, {1, 7.8}}));
    painter.setPen(Stroke(colour));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(4.6, 3.8, 4.4, 4.4), -50 * 16, 100 * 16);
    painter.drawArc(QRectF(3.4, 1.6, 7.6, 8.8), -50 * 16, 100 * 16);
  });
}

void DrawViewingJpegMark(QPainter& painter, const QRectF& box, const QColor& colour) {
  OnGrid(painter, box, [&] {
    painter.setPen(Stroke(colour));
    painter.drawPolyline(QPolygonF({{3, 3.6}, {3, 1.2}, {11, 1.2}, {11, 7.6}, {9, 7.6}}));
    painter.drawRect(QRectF(1, 4, 8, 6.8));
  });
}

void DrawFailureCross(QPainter& painter, const QPointF& centre) {
  const QRectF square(centre.x() - kCrossSize / 2, centre.y() - kCrossSize / 2, kCrossSize, kCrossSize);
  painter.save();
  painter.setClipRect(square, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::red, kCrossWidth, Qt::SolidLine, Qt::SquareCap));
  painter.drawLine(square.topLeft(), square.bottomRight());
  painter.drawLine(square.bottomLeft(), square.topRight());
  painter.restore();
}

}  // namespace ml::catalogue::ui
