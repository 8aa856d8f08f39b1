#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The small signs on a thumbnail, drawn to fill the height of `box`.
namespace ml::catalogue::ui {

/// Edge of the square that a sign stands in, in logical pixels.
inline constexpr int kMarkSize = 12;

void DrawTagMark(QPainter& painter, const QRectF& box, const QColor& colour);
void DrawSoundMark(QPainter& painter, const QRectF& box, const QColor& colour);
void DrawViewingJpegMark(QPainter& painter, const QRectF& box, const QColor& colour);
/// Stands where a thumbnail could not be made, always of one size.
void DrawFailureCross(QPainter& painter, const QPointF& centre);

}  // namespace ml::catalogue::ui
