#include "app/view_layout.h"

#include <gtest/gtest.h>

#include "app/double_click.h"
#include "app/file_kinds.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

LayoutRequest Request(ViewMode mode, SplitterPlaces places = {}) {
  return {.mode = mode, .places = places, .width = 1000, .height = 700, .controlsWidth = 290, .stripHeight = 130};
}

TEST(ViewLayout, EachModeHasItsPanes) {
  struct Case {
    ViewMode mode;
    bool fullView, tree, list, picture, controls, lower;
  };
  for (const auto& c : {Case{ViewMode::Main, false, false, false, true, true, false},
                        Case{ViewMode::Main, true, false, false, true, false, false},
                        Case{ViewMode::Thumbnails, false, true, true, false, false, false},
                        Case{ViewMode::FilmStripSide, false, false, true, true, false, true},
                        Case{ViewMode::FilmStripBelow, true, false, true, true, false, true}}) {
    auto request = Request(c.mode);
    request.fullView = c.fullView;
    const auto layout = LayoutOf(request);
    EXPECT_EQ(layout.tree, c.tree) << static_cast<int>(c.mode);
    EXPECT_EQ(layout.list, c.list) << static_cast<int>(c.mode);
    EXPECT_EQ(layout.picture, c.picture) << static_cast<int>(c.mode);
    EXPECT_EQ(layout.controls, c.controls) << static_cast<int>(c.mode);
    EXPECT_EQ(layout.lowerPane, c.lower) << static_cast<int>(c.mode);
  }
}

TEST(ViewLayout, SplittersLeaveRoomForThePicture) {
  const SplitterPlaces wide{.strip = 990, .lowerPane = 690};
  const auto limited = LimitedTo(wide, 1000, 700);
  EXPECT_EQ(limited.strip, 850);
  EXPECT_EQ(limited.lowerPane, 544) << "150 above the boundary of 6";
  EXPECT_EQ(LimitedTo({.lowerPane = -690}, 1000, 700).lowerPane, -544) << "a collapsed pane stays so";
  const auto fine = SplitterPlaces{.strip = 300, .lowerPane = 250};
  EXPECT_EQ(LimitedTo(fine, 1000, 700), fine);

  const auto below = LayoutOf(Request(ViewMode::FilmStripBelow, wide));
  EXPECT_EQ(700 - below.listHeight - below.lowerHeight - 2 * kSplitterWidth, kLeastPicture);
  auto flat = Request(ViewMode::FilmStripBelow);
  flat.height = 260;
  EXPECT_FALSE(LayoutOf(flat).lowerPane) << "there is no room for it";
}

TEST(ViewLayout, CollapsedPaneComesBackAtItsSize) {
  const SplitterPlaces open{.strip = 180, .lowerPane = 240};
  const auto collapsed = WithLowerPaneToggled(open);
  EXPECT_EQ(collapsed.lowerPane, -240);
  EXPECT_FALSE(LayoutOf(Request(ViewMode::FilmStripSide, collapsed)).lowerPane);
  EXPECT_EQ(WithLowerPaneToggled(collapsed), open);
  EXPECT_EQ(WithPanesOpened(collapsed), open);
  EXPECT_EQ(WithLowerPaneAt(open, 0), collapsed) << "dragged shut";
  EXPECT_EQ(WithLowerPaneAt(collapsed, 90).lowerPane, 90) << "dragged open";
  EXPECT_EQ(WithLowerPaneToggled({.lowerPane = 0}).lowerPane, 200);
}

TEST(DoubleClick, DoesWhatTheSettingSays) {
  using Id = CommandId;
  constexpr auto kMain = ViewMode::Main, kThumbs = ViewMode::Thumbnails, kSide = ViewMode::FilmStripSide;
  struct Case {
    int action;
    ViewMode mode;
    Id id;
  };
  for (const auto& c :
       {Case{0, kThumbs, Id::MainView}, Case{1, kSide, Id::ViewActualImage}, Case{2, kThumbs, Id::EditImage},
        Case{3, kMain, Id::FilmStripSide}, Case{3, kSide, Id::MainView}, Case{3, kThumbs, Id::MainView},
        Case{4, kMain, Id::FilmStripBelow}, Case{4, kSide, Id::MainView}, Case{5, kThumbs, Id::FilmStripSide},
        Case{5, kSide, Id::ThumbnailView}, Case{6, kThumbs, Id::FilmStripBelow}, Case{6, kMain, Id::ThumbnailView},
        Case{7, kThumbs, Id::MainView}, Case{-1, kSide, Id::MainView}}) {
    EXPECT_EQ(DoubleClickCommand(c.action, c.mode), c.id) << c.action << " in " << static_cast<int>(c.mode);
  }
}

TEST(FileKinds, AreToldByTheName) {
  struct Case {
    const char* path;
    FileKinds kinds;
  };
  FileKindMemory memory;
  for (const auto& c :
       {Case{"/a/x.JPEG", {.jpeg = true, .holdsIptc = true}}, Case{"/a/x.tiff", {.tiff = true, .holdsIptc = true}},
        Case{"/a/x.Nef", {.raw = true, .holdsIptc = true}}, Case{"/a/x.crw", {.raw = true, .crw = true}},
        Case{"/a/x.THM", {.raw = true}}, Case{"/a/x.avi", {.avi = true}}, Case{"/a/x.orf", {}}, Case{"/a/x.mrw", {}},
        Case{"/a/x.raf", {}}, Case{"/a/x.pef", {}}, Case{"/a/x.gif", {}}}) {
    EXPECT_EQ(memory.Of(c.path), c.kinds) << c.path;
  }
}

/// The smallest file that passes for a raw one: a directory with the height 192, and a mebibyte in all.
std::string RawTiff() {
  std::string tiff("II*\0\x08\0\0\0\x01\0\x01\x01\x03\0\x01\0\0\0\xc0\0\0\0\0\0\0\0", 26);
  tiff.resize(1 << 20);
  return tiff;
}

TEST(FileKinds, TiffIsOpenedOnceAndOnlyWhenItDecides) {
  const test::TempDir dir;
  const auto raw = dir.Write("raw.TIF", RawTiff()), plain = dir.Write("plain.tif", "II*");
  FileKindMemory memory;
  EXPECT_TRUE(memory.Of(raw).raw);
  EXPECT_FALSE(memory.Of(plain).raw);
  dir.Write("plain.tif", RawTiff());
  EXPECT_FALSE(memory.Of(plain).raw) << "not opened a second time";
  memory.Forget();
  FileKinds sum{.raw = true};
  memory.Add(plain, sum);
  dir.Write("plain.tif", "II*");
  EXPECT_FALSE(memory.Of(plain).raw) << "was opened although a raw file was known already";
  FileKinds mixed;
  for (const auto* path : {"/a/1.jpg", "/a/2.crw", "/a/3.avi"}) memory.Add(path, mixed);
  EXPECT_EQ(mixed, (FileKinds{.jpeg = true, .raw = true, .crw = true, .avi = true}));
}

}  // namespace
}  // namespace ml::app
