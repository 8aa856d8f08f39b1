#pragma once

#include <QPointF>
#include <QRect>
#include <QSize>

namespace ml::catalogue::ui {

/// Where things stand in one cell of the thumbnail list, in logical pixels.
struct CellGeometry {
  int thumbnailSize = 80;  ///< edge of the square that thumbnails fit into
  int lineHeight = 14;     ///< of the text above and below it

  /// Size + 16 wide and size + 35 high, higher where the desktop's font needs it.
  QSize CellSize() const;
  /// The framed part; the rest separates the items.
  QRect Frame(const QRect& cell) const;
};

/// Top left of something `size` large in the middle of `area`, on a whole device pixel: thumbnails are not
/// interpolated.
QPointF CentredOnPixels(const QRectF& area, const QSizeF& size, double pixelRatio);

enum class GridMove { Left, Right, Up, Down, PageUp, PageDown, Home, End };

/// How the list runs: `line` items side by side in the direction of reading, `page` lines in sight.
struct GridExtent {
  int count = 0;
  int line = 1;
  int page = 1;
};

/// The neighbour of `current` (-1: none yet, then the first item). A move off an end goes to the first or
/// the last item; -1 in an empty list.
int GridNeighbour(GridMove move, int current, const GridExtent& extent);

}  // namespace ml::catalogue::ui
