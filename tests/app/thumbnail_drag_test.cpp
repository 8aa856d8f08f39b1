#include <gtest/gtest.h>

#include <QMimeData>
#include <QSignalSpy>

#include "app/picture_view.h"
#include "app/thumbnail_list_fixture.h"
#include "catalogue/ui/drop_place.h"
#include "platform/ui/internal_drag.h"

namespace ml {
namespace {

using catalogue::ui::AutoScrollStep;
using catalogue::ui::DropPlaceOver;
using test::Numbered;
using test::ThumbnailList;
using View = catalogue::ui::ThumbnailListView;

TEST(DropPlace, IsBeforeAnEntryOrBehindItsRightThird) {
  const QRect cell(100, 200, 90, 120);
  struct Case {
    QPoint pointer;
    bool selected, oneInLine;
    int position;
    QRect mark;
  };
  const QRect left(100, 200, 4, 120), right(186, 200, 4, 120), top(100, 200, 90, 4), bottom(100, 316, 90, 4);
  for (const auto& c : {Case{{101, 310}, false, false, 7, left}, Case{{159, 210}, false, false, 7, left},
                        Case{{160, 210}, false, false, 8, right}, Case{{185, 210}, true, false, 7, left},
                        Case{{185, 210}, false, true, 7, top}, Case{{101, 280}, false, true, 8, bottom},
                        Case{{101, 280}, true, true, 7, top}}) {
    const auto place =
        DropPlaceOver({.index = 7, .cell = cell, .selected = c.selected, .oneInLine = c.oneInLine}, c.pointer);
    EXPECT_EQ(place.position, c.position) << c.pointer.x() << "," << c.pointer.y();
    EXPECT_EQ(place.mark, c.mark) << c.pointer.x() << "," << c.pointer.y();
  }
}

TEST(AutoScroll, IsTwiceTheDistanceUpToALimit) {
  EXPECT_EQ(AutoScrollStep(0, 0, 400), 0);
  EXPECT_EQ(AutoScrollStep(400, 0, 400), 0);
  EXPECT_EQ(AutoScrollStep(-10, 0, 400), -20);
  EXPECT_EQ(AutoScrollStep(430, 0, 400), 60);
  EXPECT_EQ(AutoScrollStep(-300, 0, 400), -150);
  EXPECT_EQ(AutoScrollStep(900, 0, 400), 150);
}

/// What the list itself drags.
struct Dragged : QMimeData {
  Dragged() {
    setData(QStringLiteral("text/uri-list"), "file:///shots/IMG_0001.JPG\r\n");
    platform::ui::MarkInternalDrag(*this);
  }
};

template <class Event>
bool Send(QWidget* to, const QPoint& at, const QMimeData& data) {
  Event event(at, Qt::CopyAction | Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(to, &event);
  return event.isAccepted();
}

TEST(ThumbnailDrag, DropTellsThePlaceAndAMarkShowsIt) {
  ThumbnailList shown(Numbered(12));  // five in a row
  shown.WaitForAll();
  shown.list.marks[1].selected = true;
  shown.view->MarksChanged();
  QSignalSpy moves(shown.view.get(), &View::moveWanted), opened(shown.view.get(), &View::pathsDropped);
  const Dragged data;
  auto* viewport = shown.view->viewport();
  const auto cell = [&](int row) { return shown.view->visualRect(shown.view->model()->index(row, 0)); };
  const auto dropAt = [&](const QPoint& at) {
    moves.clear();
    Send<QDragEnterEvent>(viewport, at, data);  // the toolkit drops where it entered
    EXPECT_TRUE(Send<QDropEvent>(viewport, at, data));
    return moves.isEmpty() ? -1 : moves[0][0].toInt();
  };
  const QImage before = viewport->grab().toImage();
  EXPECT_TRUE(Send<QDragEnterEvent>(viewport, cell(3).center(), data));
  EXPECT_TRUE(Send<QDragMoveEvent>(viewport, cell(3).center(), data));
  EXPECT_NE(viewport->grab().toImage(), before) << "a mark";
  EXPECT_EQ(dropAt(cell(3).center()), 3);
  EXPECT_EQ(viewport->grab().toImage(), before) << "the mark is gone";

  EXPECT_EQ(dropAt(cell(3).bottomRight() - QPoint(3, 3)), 4);
  EXPECT_EQ(dropAt(cell(1).bottomRight() - QPoint(3, 3)), 1) << "dragged itself";
  EXPECT_EQ(dropAt(QPoint(viewport->width() - 2, cell(4).center().y())), 5) << "beside the first row";
  EXPECT_EQ(dropAt(QPoint(viewport->width() - 2, cell(11).center().y())), 12) << "behind the last one";
  EXPECT_EQ(dropAt(QPoint(20, cell(11).bottom() + 10)), 12) << "below all";
  EXPECT_EQ(opened.count(), 0) << "thumbnails of this window are not opened as files";
}

TEST(ThumbnailDrag, OtherPanesDoNotTakeThumbnails) {
  app::PictureView picture;
  QSignalSpy opened(&picture, &app::PictureView::pathsDropped);
  picture.show();
  const Dragged data;
  EXPECT_FALSE(Send<QDragEnterEvent>(&picture, QPoint(5, 5), data));
  Send<QDropEvent>(&picture, QPoint(5, 5), data);
  EXPECT_EQ(opened.count(), 0);
}

}  // namespace
}  // namespace ml
