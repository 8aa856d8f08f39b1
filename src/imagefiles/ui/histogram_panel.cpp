#include "imagefiles/ui/histogram_panel.h"

#include <QPainter>
#include <QPolygonF>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace ml::imagefiles::ui {
namespace {

constexpr QSize kFrame{275, 114};
constexpr QSize kSmallest{110, 46};
/// The pixel in which the axes meet.
constexpr int kOriginX = 10, kOriginY = 105;
constexpr int kLevels = 256, kTallest = 100;
constexpr int kTickSpacing = 10, kLongTick = 5, kShortTick = 2;

constexpr QColor kGround{212, 208, 200};
constexpr QColor kBars{90, 90, 90};
constexpr QColor kRed{255, 0, 0}, kGreen{0, 200, 0}, kBlue{0, 0, 255};

/// A whole number of the screen's pixels wide: else lines of one picture would differ.
QPen Pen(const QPainter& painter, const QColor& colour) {
  const double scale = painter.deviceTransform().m11();
  return {colour, std::max(1.0, std::floor(scale)) / scale, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
}

double ScaleFor(int width) { return std::min(1.0, static_cast<double>(width) / kFrame.width()); }

void DrawFrame(QPainter& painter) {
  painter.fillRect(QRect(QPoint(0, 0), kFrame), kGround);
  painter.setPen(Pen(painter, Qt::black));
  painter.drawRect(QRectF(0.5, 0.5, kFrame.width() - 1, kFrame.height() - 1));
}

void DrawTicks(QPainter& painter, int first, int length) {
  for (int at = first; at <= kLevels; at += kTickSpacing) painter.drawLine(at, 0, at, -length);
  for (int at = first; at <= kTallest; at += kTickSpacing) painter.drawLine(0, at, -length, at);
}

void DrawAxes(QPainter& painter) {
  painter.setPen(Pen(painter, Qt::black));
  painter.drawLine(0, 0, kLevels, 0);
  painter.drawLine(0, 0, 0, kTallest);
  DrawTicks(painter, 0, kLongTick);
  DrawTicks(painter, kTickSpacing / 2, kShortTick);
}

/// All bars as one outline: drawn one by one they would leave seams where a level is no whole number of pixels wide.
void DrawBars(QPainter& painter, const HistogramCurves::Heights& heights) {
  constexpr double kHalf = 0.5;
  QPolygonF outline;
  outline << QPointF(kHalf, -kHalf);
  for (int level = 1; level < kLevels; ++level) {
    const double top = heights[static_cast<std::size_t>(level)] - kHalf;
    outline << QPointF(level - kHalf, top) << QPointF(level + kHalf, top);
  }
  outline << QPointF(kLevels - kHalf, -kHalf);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kBars);
  painter.drawPolygon(outline);
  painter.setBrush(Qt::NoBrush);
}

void DrawCurve(QPainter& painter, const std::optional<HistogramCurves::Heights>& heights, const QColor& colour) {
  if (!heights) return;
  QPolygonF line;
  for (int level = 0; level < kLevels; ++level) line << QPointF(level, (*heights)[static_cast<std::size_t>(level)]);
  painter.setPen(Pen(painter, colour));
  painter.drawPolyline(line);
}

/// For those who do not see the picture.
QString Shown(const HistogramCurves& curves) {
  QStringList names;
  if (curves.red) names << QStringLiteral("red");
  if (curves.green) names << QStringLiteral("green");
  if (curves.blue) names << QStringLiteral("blue");
  if (curves.intensity) names << QStringLiteral("intensity");
  if (names.isEmpty()) return QStringLiteral("Nothing to show");
  return QStringLiteral("Levels from black to white: ") + names.join(QStringLiteral(", "));
}

}  // namespace

HistogramPanel::HistogramPanel(QWidget* parent) : QWidget(parent) {
  setAccessibleName(QStringLiteral("Histogram"));
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  setAccessibleDescription(Shown(curves_));
}

void HistogramPanel::SetHistogram(const Histogram& counts, const HistogramChannels& wanted) {
  auto curves = MakeHistogramCurves(Normalise(counts), wanted);
  if (curves == curves_) return;
  curves_ = curves;
  setAccessibleDescription(Shown(curves_));
  setToolTip(Shown(curves_));
  update();
}

QSize HistogramPanel::sizeHint() const { return kFrame; }

QSize HistogramPanel::minimumSizeHint() const { return kSmallest; }

int HistogramPanel::heightForWidth(int width) const {
  return static_cast<int>(std::ceil(kFrame.height() * ScaleFor(width)));
}

void HistogramPanel::paintEvent(QPaintEvent*) {
  const double scale = ScaleFor(width());
  QPainter painter(this);
  painter.scale(scale, scale);
  DrawFrame(painter);
  // Co-ordinates are the middles of pixels from here on, and upwards is more.
  painter.translate(kOriginX + 0.5, kOriginY + 0.5);
  painter.scale(1, -1);
  DrawAxes(painter);
  if (curves_.intensity) DrawBars(painter, *curves_.intensity);
  painter.setRenderHint(QPainter::Antialiasing);
  DrawCurve(painter, curves_.red, kRed);
  DrawCurve(painter, curves_.green, kGreen);
  DrawCurve(painter, curves_.blue, kBlue);
}

}  // namespace ml::imagefiles::ui
