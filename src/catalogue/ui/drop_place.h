#pragma once

#include <QPoint>
#include <QRect>

namespace ml::catalogue::ui {

/// Between which entries dragged thumbnails go, and where the mark for it stands.
struct DropPlace {
  int position = -1;  ///< they go before the entry of this index, or behind the last one; -1: nowhere
  QRect mark;         ///< a bar on the edge of a cell, in the coordinates of the view
};

/// An entry with the pointer over it.
struct DropTarget {
  int index = 0;
  QRect cell;
  bool selected = false;   ///< it is one of those that are dragged
  bool oneInLine = false;  ///< the list is a single column: before and behind are above and below
};
/// Before the entry; behind it in the right third of one that is not dragged itself.
DropPlace DropPlaceOver(const DropTarget& target, const QPoint& pointer);

/// How far a list that lies between `begin` and `end` scrolls on while the pointer of a drag is at `pointer`
/// outside of it: twice the distance, at most 150, negative towards the start; 0 inside.
int AutoScrollStep(int pointer, int begin, int end);

}  // namespace ml::catalogue::ui
