#include "catalogue/ui/drop_place.h"

#include <algorithm>

namespace ml::catalogue::ui {
namespace {

constexpr int kMarkWidth = 4;
constexpr int kFastest = 150;

/// On the edge that `cell` shares with its neighbour, within the cell so that the edge of the list does not cut it.
QRect MarkAt(const QRect& cell, bool behind, bool oneInLine) {
  QRect mark = cell;
  if (oneInLine) {
    behind ? mark.setTop(cell.bottom() + 1 - kMarkWidth) : mark.setHeight(kMarkWidth);
  } else {
    behind ? mark.setLeft(cell.right() + 1 - kMarkWidth) : mark.setWidth(kMarkWidth);
  }
  return mark;
}

}  // namespace

DropPlace DropPlaceOver(const DropTarget& target, const QPoint& pointer) {
  const auto& cell = target.cell;
  const int along = target.oneInLine ? pointer.y() - cell.top() : pointer.x() - cell.left();
  const int length = target.oneInLine ? cell.height() : cell.width();
  const bool behind = !target.selected && along * 3 >= length * 2;
  return {target.index + (behind ? 1 : 0), MarkAt(cell, behind, target.oneInLine)};
}

int AutoScrollStep(int pointer, int begin, int end) {
  if (pointer < begin) return std::max(2 * (pointer - begin), -kFastest);
  if (pointer > end) return std::min(2 * (pointer - end), kFastest);
  return 0;
}

}  // namespace ml::catalogue::ui
