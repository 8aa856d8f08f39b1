#include <gtest/gtest.h>

#include <QItemSelectionModel>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>

#include "app/thumbnail_list_fixture.h"
#include "catalogue/ui/caption.h"
#include "catalogue/ui/thumbnail_cell.h"
#include "catalogue/ui/thumbnail_colours.h"

namespace ml {
namespace {

using catalogue::ui::GridMove;
using test::Numbered;
using test::ThumbnailList;
using View = catalogue::ui::ThumbnailListView;
using Indices = std::vector<int>;

struct MoveCase {
  GridMove move;
  int from, to;
};

TEST(GridNeighbour, StaysInsideTheList) {
  // 0 1 2 3 4 / 5 .. 9 / .. / 20 21 22
  const catalogue::ui::GridExtent extent{.count = 23, .line = 5, .page = 2};
  for (const auto& c :
       {MoveCase{GridMove::Left, 5, 4}, MoveCase{GridMove::Left, 0, 0}, MoveCase{GridMove::Right, 4, 5},
        MoveCase{GridMove::Right, 22, 22}, MoveCase{GridMove::Up, 7, 2}, MoveCase{GridMove::Up, 3, 3},
        MoveCase{GridMove::Down, 16, 21}, MoveCase{GridMove::Down, 19, 22}, MoveCase{GridMove::PageDown, 3, 13},
        MoveCase{GridMove::PageDown, 14, 22}, MoveCase{GridMove::PageUp, 21, 11}, MoveCase{GridMove::PageUp, 4, 0},
        MoveCase{GridMove::End, 1, 22}, MoveCase{GridMove::Right, -1, 0}}) {
    EXPECT_EQ(GridNeighbour(c.move, c.from, extent), c.to) << static_cast<int>(c.move) << " from " << c.from;
  }
  EXPECT_EQ(GridNeighbour(GridMove::End, -1, {.count = 0}), -1);
}

struct CaptionCase {
  const char* path;
  double room;
  const char* caption;
};

TEST(Caption, IsCutFromTheNameToTheStemToItsFirstCharacters) {
  const auto tenWide = [](const std::string& text) {
    return 10.0 * static_cast<double>(QString::fromStdString(text).size());
  };
  for (const auto& c :
       {CaptionCase{"/d/IMG_0042.CRW", 120, "IMG_0042.CRW"}, CaptionCase{"/d/IMG_0042.CRW", 119, "IMG_0042"},
        CaptionCase{"/d/IMG_0042.CRW", 79, "IMG_..."}, CaptionCase{"/d/IMG_0042.CRW", 60, "IMG..."},
        CaptionCase{"/d/IMG_0042.CRW", 59, ""}, CaptionCase{"/d/abc.jpg", 29, ""},
        CaptionCase{"/d/s\xc3\xa9jour \xc3\xa0 la mer.jpg", 110, "s\xc3\xa9jour \xc3\xa0..."},
        CaptionCase{"/d/s\xe9jour.jpg", 70, "s\xc3\xa9jour"}}) {
    EXPECT_EQ(catalogue::ui::CutCaption(c.path, c.room, tenWide), c.caption) << c.path << " in " << c.room;
  }
}

TEST(ThumbnailColours, FollowSchemeAndExtension) {
  using catalogue::ui::SchemeColours;
  const auto colour = [](const char* scheme, const char* path) {
    const auto kind = catalogue::ui::KindOfFile(path);
    return kind.textColour ? SchemeColours(scheme).*kind.textColour : QColor();
  };
  EXPECT_EQ(colour("Gray", "/a/b.CRW"), QColor(190, 0, 0));
  EXPECT_EQ(colour("WHITE", "x.Pef"), QColor(190, 0, 0));
  EXPECT_EQ(colour("black", "x.jpeg"), QColor(0, 200, 240));
  EXPECT_EQ(colour("border", "x.avi"), QColor(0, 100, 0));
  EXPECT_EQ(colour("nonsense", "x.nef"), QColor(160, 160, 0));
  EXPECT_FALSE(colour("gray", "x.gif").isValid());
}

TEST(ThumbnailList, KeysMoveAndShiftExtends) {
  ThumbnailList shown(Numbered(40));  // five in a row
  EXPECT_EQ(shown.list.focusIndex, -1);
  shown.Key(Qt::Key_Down);
  EXPECT_EQ(shown.list.SelectedIndices(), Indices{0}) << "the first key selects the first image";
  QSignalSpy edited(shown.view.get(), &View::selectionEdited);
  shown.Key(Qt::Key_Right);
  shown.Key(Qt::Key_Down);
  EXPECT_EQ(shown.list.SelectedIndices(), Indices{6});
  shown.Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(shown.list.SelectedIndices(), (Indices{6, 7, 8, 9, 10, 11}));
  EXPECT_EQ(shown.list.focusIndex, 11);
  EXPECT_EQ(edited.count(), 3);
  shown.Key(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(shown.list.SelectedCount(), 34);
  shown.Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(shown.list.SelectedCount(), 40);
  EXPECT_EQ(shown.list.focusIndex, 39);
}

TEST(ThumbnailList, StripRunsToTheRight) {
  ThumbnailList shown(Numbered(40), {500, 130});
  shown.view->SetArrangement(View::Arrangement::Columns);
  QCoreApplication::processEvents();
  shown.view->SetFocus(3);
  shown.Key(Qt::Key_Right);
  EXPECT_EQ(shown.list.focusIndex, 4);
  shown.Key(Qt::Key_PageDown);
  EXPECT_EQ(shown.list.focusIndex, 9);
  const QRect tenth = shown.view->visualRect(shown.view->currentIndex());
  EXPECT_EQ(tenth.top(), 0);
  EXPECT_TRUE(shown.view->viewport()->rect().contains(catalogue::ui::CellGeometry{}.Frame(tenth)));
}

TEST(ThumbnailList, MarksOfTheListReachTheViewWithoutEcho) {
  ThumbnailList shown(Numbered(12));
  QSignalSpy edited(shown.view.get(), &View::selectionEdited);
  for (const int i : {1, 2, 5, 11}) shown.list.marks[static_cast<std::size_t>(i)].selected = true;
  shown.list.focusIndex = 5;
  shown.view->MarksChanged();
  EXPECT_EQ(shown.view->selectionModel()->selectedIndexes().size(), 4);
  EXPECT_EQ(shown.view->currentIndex().row(), 5);
  EXPECT_EQ(shown.list.SelectedIndices(), (Indices{1, 2, 5, 11}));
  EXPECT_EQ(edited.count(), 0);
  QTest::mouseClick(shown.view->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    shown.view->visualRect(shown.view->model()->index(2, 0)).center());
  EXPECT_EQ(shown.list.SelectedIndices(), (Indices{1, 5, 11}));
}

TEST(ThumbnailList, NewOrderKeepsSelectionFocusAndTop) {
  ThumbnailList shown(Numbered(200));
  shown.view->SetFocus(120);
  shown.list.marks[120].selected = true;
  shown.view->MarksChanged();
  shown.view->ScrollTo(100, QAbstractItemView::PositionAtTop);
  const auto top = shown.list.files[static_cast<std::size_t>(shown.view->TopVisibleIndex())];
  std::vector<std::string> reversed(shown.list.files.rbegin(), shown.list.files.rend());
  shown.worker->Reorder(reversed);
  shown.view->ListReordered();
  EXPECT_EQ(shown.view->currentIndex().row(), 79);
  EXPECT_EQ(shown.list.SelectedIndices(), Indices{79});
  const int newTop = shown.list.IndexOfPath(top);
  EXPECT_EQ(shown.view->TopVisibleIndex(), newTop - newTop % 5) << "the row of the former top is on top again";
}

TEST(ThumbnailList, NewOrderKeepsTheFocusInSight) {
  ThumbnailList shown(Numbered(200));
  shown.view->SetFocus(102);
  shown.view->ScrollTo(100, QAbstractItemView::PositionAtTop);
  std::vector<std::string> order = shown.list.files;
  std::swap(order[102], order[2]);
  shown.worker->Reorder(order);
  shown.view->ListReordered();
  EXPECT_TRUE(shown.view->visualRect(shown.view->currentIndex()).intersects(shown.view->viewport()->rect()));
}

TEST(ThumbnailList, ListIsReplacedUnderTheView) {
  ThumbnailList shown(Numbered(5000));
  shown.view->SetFocus(4999);
  const QRect last = shown.view->visualRect(shown.view->model()->index(4999, 0));
  EXPECT_TRUE(shown.view->viewport()->rect().contains(last)) << "all are laid out at once";
  shown.Load(Numbered(3));
  EXPECT_EQ(shown.view->model()->rowCount(), 3);
  EXPECT_EQ(shown.list.focusIndex, -1);
  shown.view->grab();
  shown.Load({});
  shown.view->grab();
  shown.Key(Qt::Key_Down);
  EXPECT_EQ(shown.list.focusIndex, -1);
}

TEST(ThumbnailList, TypingFindsANameAndTakesDigitsAndBlanksWithIt) {
  ThumbnailList shown({"IMG_0001.JPG", "IMG_0042.JPG", "sea side.jpg", "sea.jpg"});
  QSignalSpy tags(shown.view.get(), &View::tagToggled);
  QTest::keyClicks(shown.view.get(), QStringLiteral("img_004"));
  EXPECT_EQ(shown.list.focusIndex, 1);
  QTest::qWait(QApplication::keyboardInputInterval() + 50);
  QTest::keyClicks(shown.view.get(), QStringLiteral("sea s"));
  EXPECT_EQ(shown.list.focusIndex, 2);
  EXPECT_EQ(tags.count(), 0);
  QTest::qWait(QApplication::keyboardInputInterval() + 50);
  shown.Key(Qt::Key_Space);
  shown.Key(Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(tags.count(), 2);
}

TEST(ThumbnailList, EnterAndDoubleClickActivate) {
  ThumbnailList shown(Numbered(6));
  QSignalSpy activated(shown.view.get(), &View::imageActivated);
  shown.view->SetFocus(2);
  shown.Key(Qt::Key_Return);
  const QPoint fifth = shown.view->visualRect(shown.view->model()->index(4, 0)).center();
  QTest::mouseClick(shown.view->viewport(), Qt::LeftButton, {}, fifth);
  QTest::mouseDClick(shown.view->viewport(), Qt::LeftButton, {}, fifth);
  ASSERT_EQ(activated.count(), 2);
  EXPECT_EQ(activated[0][0].toInt(), 2);
  EXPECT_EQ(activated[1][0].toInt(), 4);
}

TEST(ThumbnailList, TellsWhatItShows) {
  ThumbnailList shown({"IMG_0042.CRW", "bad <i>name.JPG", "viewing sound.tif"});
  shown.list.SetTag(0, true);
  shown.WaitForAll();
  const auto text = [&](int row, int role) { return shown.view->model()->index(row, 0).data(role).toString(); };
  EXPECT_EQ(text(0, Qt::AccessibleTextRole), QStringLiteral("IMG_0042.CRW, tagged, raw, 1 of 3"));
  EXPECT_EQ(text(2, Qt::AccessibleTextRole),
            QStringLiteral("viewing sound.tif, TIFF, with viewing JPEG, with sound, 3 of 3"));
  EXPECT_TRUE(text(1, Qt::ToolTipRole).contains(QStringLiteral("Unable to read the image:")));
  EXPECT_TRUE(text(1, Qt::ToolTipRole).contains(QStringLiteral("&lt;i&gt;name"))) << "names are no markup";
}

TEST(ThumbnailList, SendsTheWorkerToWhatIsInSight) {
  // The maker waits with its first file until the view has been scrolled.
  catalogue::ImageList list;
  std::mutex lock;
  std::vector<std::string> made;
  std::atomic<bool> entered = false, go = false;
  catalogue::CThumbnailThread worker(
      list,
      [&](const std::string& path, int size) {
        entered = true;
        while (!go) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        const std::lock_guard hold(lock);
        made.push_back(path);
        return test::FakeItem(path, size);
      },
      [](int) {}, 1);
  catalogue::ui::ThumbnailListView view(list, worker);
  view.resize(500, 400);
  view.show();
  worker.LoadList(Numbered(500));
  view.ListReplaced();
  ASSERT_TRUE(QTest::qWaitFor([&] { return entered.load(); }));
  view.ScrollTo(300, QAbstractItemView::PositionAtTop);
  go = true;
  ASSERT_TRUE(QTest::qWaitFor([&] { return worker.FinishedCount() > 5; }));
  worker.Pause();
  EXPECT_EQ(made[1], list.files[static_cast<std::size_t>(view.TopVisibleIndex())]);
  EXPECT_EQ(view.TopVisibleIndex(), 300);
}

TEST(ThumbnailList, PaintsThumbnailsPixelForPixel) {
  ThumbnailList shown({"a.jpg"});
  shown.WaitForAll();
  const QImage picture = shown.view->viewport()->grab().toImage();
  const auto expected = test::Gradient(shown.view->ThumbnailPixels(), shown.view->ThumbnailPixels() * 2 / 3);
  const double ratio = shown.view->devicePixelRatioF();
  const QRect cell = shown.view->visualRect(shown.view->model()->index(0, 0));
  const QRectF frame = catalogue::ui::CellGeometry{.thumbnailSize = 80}.Frame(cell);
  const QPointF corner =
      catalogue::ui::CentredOnPixels(frame, QSizeF(expected.width, expected.height) / ratio, ratio) * ratio;
  for (const QPoint at : {QPoint(0, 0), QPoint(expected.width - 1, 0), QPoint(7, expected.height - 1)}) {
    const auto* p = expected.Row(at.y()) + std::ptrdiff_t{3} * at.x();
    EXPECT_EQ(picture.pixel(corner.toPoint() + at), qRgb(int(p[2]), int(p[1]), int(p[0]))) << at.x() << "," << at.y();
  }
}

TEST(ThumbnailList, TakesDroppedPathsByTheirBytes) {
  ThumbnailList shown(Numbered(1));
  std::vector<std::string> dropped;
  QObject::connect(shown.view.get(), &View::pathsDropped, [&](const auto& paths) { dropped = paths; });
  QMimeData data;
  data.setData(QStringLiteral("text/uri-list"), "file:///shots/a%20b%25\r\nfile:///shots/caf%E9.jpg\r\n");
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(shown.view->viewport(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  EXPECT_EQ(enter.dropAction(), Qt::CopyAction) << "the source keeps its files";
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(shown.view->viewport(), &drop);
  EXPECT_EQ(dropped, (std::vector<std::string>{"/shots/a b%", "/shots/caf\xe9.jpg"}));
}

}  // namespace
}  // namespace ml
