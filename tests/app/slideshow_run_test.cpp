#include "app/window_test.h"
#include "batch/ui/slideshow_window.h"
#include "metadata/exif_data.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using batch::ui::SlideshowWindow;

class SlideshowCommand : public WindowTest {
 protected:
  SlideshowCommand() {
    AddPhotos({"1.jpg", "2.jpg", "3.jpg"});
    settings::Settings settings;
    settings.slideshow.interval = 600;
    Open(settings);
    Select({0});
  }

  /// Runs the command, and `use` in the show once its first picture is there.
  void Show(const std::function<void(SlideshowWindow&)>& use) {
    EXPECT_TRUE(RunWithDialog<SlideshowWindow>(CommandId::Slideshow, [&](SlideshowWindow& show) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&show));
      EXPECT_TRUE(QTest::qWaitFor([&] { return !show.Player().Shown().path.empty(); }, 30'000));
      use(show);
    }));
  }
  static void Press(SlideshowWindow& show, const char* keys) {
    QTest::keySequence(&show, QKeySequence(QLatin1String(keys), QKeySequence::PortableText));
  }
};

TEST_F(SlideshowCommand, HandsBackWhatItWasLeftWith) {
  session->list.SetTag(1, true);
  Show([](SlideshowWindow& show) {
    EXPECT_TRUE(show.Player().IsTagged(show.State().shown[1]));
    for (const auto* keys : {"Right", "Down", "Right", "Up", "Ctrl+7", "Ctrl+C", "Ctrl+Q", "Ctrl+W"}) Press(show, keys);
    ASSERT_TRUE(QTest::qWaitFor([&] { return show.Player().Shown().path == show.State().shown[2]; }, 30'000));
  });
  const auto& to = session->settings;
  EXPECT_EQ(to.slideshow.interval, 7);
  EXPECT_EQ(to.slideshow.showCaption, 0);
  EXPECT_NE(to.display.highQualityMode, 0);
  EXPECT_TRUE(session->memory.blackAndWhite);
  EXPECT_EQ(session->list.currentIndex, 2);
  EXPECT_EQ(session->list.focusIndex, 2);
  EXPECT_EQ(session->list.SelectedIndices(), std::vector{2});
}

TEST_F(SlideshowCommand, ShowsWhatIsChosenOrAll) {
  struct Case {
    std::vector<int> chosen;
    ViewMode mode;
    std::size_t count;
  };
  const Case cases[] = {{{1}, ViewMode::Thumbnails, 3}, {{0, 2}, ViewMode::Thumbnails, 2}, {{0, 2}, ViewMode::Main, 3}};
  for (const auto& c : cases) {
    Select(c.chosen);
    session->mode = c.mode;
    session->list.currentIndex = 0;
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
  EXPECT_EQ(metadata::ExifData(Day("1.jpg")).imageWidth, 200);
}

}  // namespace
}  // namespace ml::app
