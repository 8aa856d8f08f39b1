#include "catalogue/ui/thumbnail_cell.h"

#include <algorithm>
#include <cmath>

namespace ml::catalogue::ui {
namespace {

constexpr int kWidthBesideThumbnail = 16;
constexpr int kHeightBesideThumbnail = 35;
/// Between neighbouring frames, the same across and down; the focus ring stands in it.
constexpr QMargins kAroundFrame{4, 3, 2, 3};

}  // namespace

QSize CellGeometry::CellSize() const {
  const int needed = 2 * lineHeight + kAroundFrame.top() + kAroundFrame.bottom() + 1;
  return {thumbnailSize + kWidthBesideThumbnail, thumbnailSize + std::max(kHeightBesideThumbnail, needed)};
}

QRect CellGeometry::Frame(const QRect& cell) const { return cell.marginsRemoved(kAroundFrame); }

QPointF CentredOnPixels(const QRectF& area, const QSizeF& size, double pixelRatio) {
  const auto onPixel = [&](double value) { return std::round(value * pixelRatio) / pixelRatio; };
  return {onPixel(area.center().x() - size.width() / 2), onPixel(area.center().y() - size.height() / 2)};
}

int GridNeighbour(GridMove move, int current, const GridExtent& extent) {
  if (extent.count == 0) return -1;
  if (current < 0) return 0;
  const int last = extent.count - 1;
  const auto by = [&](int step) { return std::clamp(current + step, 0, last); };
  switch (move) {
    case GridMove::Left:
      return by(-1);
    case GridMove::Right:
      return by(1);
    case GridMove::Up:
      return current < extent.line ? current : current - extent.line;
    case GridMove::Down:
      return by(extent.line);
    case GridMove::PageUp:
      return by(-extent.line * extent.page);
    case GridMove::PageDown:
      return by(extent.line * extent.page);
    case GridMove::Home:
      return 0;
    case GridMove::End:
      return last;
  }
  return current;
}

}  // namespace ml::catalogue::ui
