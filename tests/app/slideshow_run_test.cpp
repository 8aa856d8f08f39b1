#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <functional>

#include "app/main_frame.h"
#include "app/session.h"
#include "batch/ui/slideshow_window.h"
#include "metadata/exif_data.h"
#include "platform/ui/qt_text.h"
#include "support/fakes.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

using batch::ui::SlideshowWindow;
using Names = std::vector<std::string>;

struct Toolkit {
  int offscreen = ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  int argc = 0;
  QApplication application{argc, nullptr};
};

/// The window over a directory, from which the command opens the show.
class SlideshowCommand : public testing::Test {
 protected:
  SlideshowCommand() {
    for (const auto* name : {"1.jpg", "2.jpg", "3.jpg"}) {
      photos.Write(name, test::MakePhoto({.width = 32, .height = 16, .thumbnail = false}));
    }
    session.settings.slideshow.interval = 600;
    session.Images().LoadDirectory(photos.Path(), "");
    session.list.SelectOnly(0);
    session.list.focusIndex = 0;
    frame.show();
    frame.UpdateAll();
  }
  ~SlideshowCommand() override { session.Worker().Pause(); }

  /// Runs the command, and `use` in the show once its first picture is there.
  void Show(const std::function<void(SlideshowWindow&)>& use) {
    bool met = false;
    QTimer::singleShot(20, &frame, [&] {
      auto* show = qobject_cast<SlideshowWindow*>(QApplication::activeModalWidget());
      if (show == nullptr) return;
      met = QTest::qWaitForWindowActive(show) &&
            QTest::qWaitFor([&] { return !show->Player().Shown().path.empty(); }, 30'000);
      use(*show);
      show->close();
    });
    frame.Runner().Run(CommandId::Slideshow);
    EXPECT_TRUE(met);
  }
  static void Press(SlideshowWindow& show, const char* keys) {
    QTest::keySequence(&show, QKeySequence(QLatin1String(keys), QKeySequence::PortableText));
  }

  Toolkit toolkit;
  test::TempDir photos;
  test::ScriptedInteraction ask;
  Session session{{}, ask, [](int) {}};
  CMainFrame frame{session};
};

TEST_F(SlideshowCommand, HandsBackWhatItWasLeftWith) {
  session.list.SetTag(1, true);
  Show([](SlideshowWindow& show) {
    EXPECT_TRUE(show.Player().IsTagged(show.State().shown[1]));
    for (const auto* keys : {"Right", "Down", "Right", "Up", "Ctrl+7", "Ctrl+C", "Ctrl+Q", "Ctrl+W"}) Press(show, keys);
    ASSERT_TRUE(QTest::qWaitFor([&] { return show.Player().Shown().path == show.State().shown[2]; }, 30'000));
  });
  const auto& to = session.settings;
  EXPECT_EQ(to.slideshow.interval, 7);
  EXPECT_EQ(to.slideshow.showCaption, 0);
  EXPECT_NE(to.display.highQualityMode, 0);
  EXPECT_TRUE(session.blackAndWhite);
  EXPECT_EQ(session.list.currentIndex, 2);
}

TEST_F(SlideshowCommand, ShowsWhatIsChosenOrAll) {
  struct Case {
    std::vector<int> chosen;
    ViewMode mode;
    std::size_t count;
  };
  const Case cases[] = {{{1}, ViewMode::Thumbnails, 3}, {{0, 2}, ViewMode::Thumbnails, 2}, {{0, 2}, ViewMode::Main, 3}};
  for (const auto& c : cases) {
    session.list.SelectNone();
    for (const int index : c.chosen) session.list.marks[static_cast<std::size_t>(index)].selected = true;
    session.mode = c.mode;
    session.list.currentIndex = 0;
    Show([&](SlideshowWindow& show) { EXPECT_EQ(show.State().shown.size(), c.count); });
  }
}

TEST_F(SlideshowCommand, TurnsFilesAsTheMainViewDoes) {
  Show([](SlideshowWindow& show) {
    Press(show, "Ctrl+Right");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return show.Player().Shown().picture->main.width < show.Player().Shown().picture->main.height; },
        30'000));
  });
  const auto path = photos / "1.jpg";
  const metadata::ExifData exif(path);
  EXPECT_EQ(exif.imageWidth, 16);
}

}  // namespace
}  // namespace ml::app
