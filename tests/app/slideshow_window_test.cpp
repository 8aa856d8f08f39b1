#include "batch/ui/slideshow_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <filesystem>

#include "batch/ui/slide_painter.h"
#include "platform/text.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::batch::ui {
namespace {

using Names = std::vector<std::string>;

class Slideshow : public testing::Test {
 protected:
  Slideshow() {
    for (const auto* name : {"1.jpg", "2.jpg", "3.jpg"}) {
      photos.Write(name, test::MakePhoto({.width = 900, .height = 1200, .thumbnail = false}));
      state.allImages.push_back(photos / name);
    }
    state.interval = 600;
    state.formatString = "@file@ @imageNumber@/@numberOfImages@";
  }

  SlideshowWindow& Open(const TaggedPaths& tagged = {}) {
    const auto expand = [](const std::string& path, const std::string& format) {
      return platform::ReplaceAll(format, "@file@", path.substr(path.rfind('/') + 1));
    };
    SlideshowHost host{
        .making = {.file = {}, .colour = {}, .expand = expand},
        .setTag = [this](const auto& path, bool on) { done.push_back((on ? "+" : "-") + path); },
        .rotate = [this](const auto& path, imaging::Turn turn,
                         QWidget&) { done.push_back((turn == imaging::Turn::cw90 ? ">" : "<") + path); }};
    window.reset();
    window = std::make_unique<SlideshowWindow>(state, tagged, std::move(host), pictures, nullptr);
    window->show();
    return *window;
  }
  /// Until the image of that name is on the screen; "" for the screen that only has text.
  bool Awaits(const std::string& name) const {
    const auto path = name.empty() ? name : photos / name;
    return QTest::qWaitFor([&] { return window->Player().Shown().path == path; }, 30'000);
  }
  std::string Current() const { return *window->State().CurrentPath(); }
  void Press(const char* keys) const {
    window->activateWindow();  // a box may have been over it
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keySequence(window.get(), QKeySequence(QLatin1String(keys), QKeySequence::PortableText));
  }
  /// What the menu offers, marked entries with a star.
  Names MenuTexts() {
    Names texts;
    QTimer::singleShot(50, window.get(), [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      for (const auto* action : menu->actions()) {
        if (!action->isSeparator()) texts.push_back((action->isChecked() ? "*" : "") + action->text().toStdString());
      }
      EXPECT_TRUE(window->State().dialogOpen);
      menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), window->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(window.get(), &event);
    EXPECT_FALSE(window->State().dialogOpen);
    return texts;
  }
  void Turn(int delta, Qt::KeyboardModifiers modifiers) {
    const QPointF place(10, 10);
    QWheelEvent event(place, place, {}, {0, delta}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window.get(), &event);
  }

  test::TempDir photos;
  SlideshowState state;
  Names done;  ///< what the host was told
  SlideshowPictures pictures{nullptr};
  std::unique_ptr<SlideshowWindow> window;
};

TEST_F(Slideshow, ObeysItsKeys) {
  struct Key {
    const char *keys, *image;
    bool plays;
  };
  const Key keys[] = {{"Ctrl+S", "1.jpg", false},     {"Right", "2.jpg", false},  {"Ctrl+P", "3.jpg", true},
                      {"Ctrl+5", "1.jpg", true},      {"Left", "3.jpg", false},   {"PgDown", "1.jpg", false},
                      {"Ctrl+Left", "1.jpg", false},  {"Up", "1.jpg", false},     {"Space", "1.jpg", false},
                      {"Ctrl+Right", "1.jpg", false}, {"Ctrl+T", "1.jpg", false}, {"Down", "1.jpg", false}};
  Open();
  ASSERT_TRUE(Awaits("1.jpg"));
  EXPECT_TRUE(window->Player().Playing());
  for (const auto& key : keys) {
    Press(key.keys);
    EXPECT_TRUE(Awaits(key.image)) << key.keys;
    EXPECT_EQ(window->Player().Playing(), key.plays) << key.keys;
  }
  EXPECT_EQ(window->State().interval, 5);
  const auto one = photos / "1.jpg";
  EXPECT_EQ(done, (Names{"<" + one, "+" + one, "-" + one, ">" + one, "+" + one, "-" + one}));
  Press("Ctrl+Q");
  Press("Ctrl+W");
  Press("Ctrl+C");
  EXPECT_TRUE(window->State().highQuality && window->State().blackAndWhite && !window->State().showCaption);
  Press("Esc");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Slideshow, MenuFollowsTheShow) {
  Open();
  ASSERT_TRUE(Awaits("1.jpg"));
  auto expected = MenuTexts();
  EXPECT_EQ(expected.front(), "As &fast as possible\tCtrl+F");
  EXPECT_EQ(expected.back(), "&Exit Slideshow\tEscape");
  Names marked = expected;
  std::erase_if(marked, [](const auto& text) { return text.front() != '*'; });
  EXPECT_EQ(marked, (Names{"*10 minutes", "*Loop", "*Show caption\tCtrl+C"}));
  Press("Ctrl+S");
  Press("Up");
  std::ranges::replace(expected, "Pause\tCtrl+S", "Play\tCtrl+P");
  std::ranges::replace(expected, "Tag Image\tCursor Up", "Untag Image\tCursor Down");
  const auto texts = MenuTexts();
  EXPECT_EQ(texts, expected);
  EXPECT_EQ(std::ranges::count(texts, "Play\tCtrl+P") + std::ranges::count(texts, "Untag Image\tCursor Down"), 2);
}

TEST_F(Slideshow, FitsPicturesAboveTheirCaptions) {
  state.formatString = "@file@\\n@imageNumber@ of @numberOfImages@";
  for (const bool below : {false, true}) {
    state.bottomCaption = below;
    Open();
    ASSERT_TRUE(Awaits("1.jpg"));
    const auto& slide = window->Player().Shown();
    EXPECT_EQ(slide.caption, (Names{"1.jpg", "1 of 3"}));
    const int lines = below ? 2 * CaptionLineHeight(window->font()) : 0;
    EXPECT_EQ(slide.picture->main.height, window->height() - lines);
  }
  // No caption: the picture takes its room.
  Press("Ctrl+C");
  EXPECT_TRUE(QTest::qWaitFor([&] { return window->Player().Shown().picture->main.height == window->height(); }));
}

TEST_F(Slideshow, GoesOnAsFastAsPicturesComeUntilItsEnd) {
  state.loop = false;
  Open();
  ASSERT_TRUE(Awaits("1.jpg"));
  Press("Ctrl+F");
  EXPECT_TRUE(Awaits("3.jpg"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window->Player().Playing(); }));
  EXPECT_EQ(Current(), photos / "3.jpg");
  Press("Right");
  EXPECT_EQ(Current(), photos / "3.jpg");
  Press("Ctrl+P");
  EXPECT_TRUE(Awaits("1.jpg"));
}

TEST_F(Slideshow, ShowsTaggedImagesOnly) {
  state.taggedOnly = true;
  Open({photos / "2.jpg", photos / "3.jpg"});
  ASSERT_TRUE(Awaits("2.jpg"));
  Press("Down");
  EXPECT_TRUE(Awaits("3.jpg"));
  Press("Down");
  EXPECT_TRUE(Awaits(""));
  const auto screen = window->grab().toImage();
  int lit = 0;
  for (int x = 0; x < screen.width(); ++x) {
    const bool text = qRed(screen.pixel(x, screen.height() / 2)) > 100;
    lit += text ? 1 : 0;
  }
  EXPECT_GT(lit, 10) << "the text that tells of it";
  Press("Right");
  Press("Up");
  EXPECT_EQ(done, (Names{"-" + photos / "2.jpg", "-" + photos / "3.jpg"}));
}

TEST_F(Slideshow, StopsAtAnImageThatIsGone) {
  std::filesystem::remove(photos / "2.jpg");
  photos.Write("3.jpg", "no picture");
  Open();
  ASSERT_TRUE(Awaits("1.jpg"));
  std::string told;
  QTimer closer;
  QObject::connect(&closer, &QTimer::timeout, &closer, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    told = box->text().toStdString();
    box->accept();
  });
  closer.start(20);
  Press("Ctrl+5");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, 30'000));
  EXPECT_EQ(told, "No such image: " + photos / "2.jpg");
  EXPECT_FALSE(window->Player().Playing());
  told.clear();
  Press("Ctrl+P");
  EXPECT_TRUE(Awaits("3.jpg"));
  QTest::qWait(60);
  EXPECT_TRUE(told.empty()) << "a broken picture tells of itself on the screen";
  EXPECT_TRUE(window->Player().Playing());
}

TEST_F(Slideshow, TurnsTheWheel) {
  Open();
  ASSERT_TRUE(Awaits("1.jpg"));
  Turn(-60, Qt::NoModifier);
  EXPECT_EQ(Current(), photos / "1.jpg");
  Turn(-60, Qt::NoModifier);
  EXPECT_TRUE(Awaits("2.jpg"));
  EXPECT_FALSE(window->Player().Playing());
  Turn(120, Qt::ShiftModifier);
  Turn(-120, Qt::ControlModifier);
  EXPECT_EQ(done, (Names{"<" + photos / "2.jpg", ">" + photos / "2.jpg"}));
}

TEST_F(Slideshow, EditsItsCaption) {
  Open();
  ASSERT_TRUE(Awaits("1.jpg"));
  for (const bool accept : {false, true}) {
    QTimer::singleShot(50, window.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(window->State().dialogOpen);
      auto* line = dialog->findChild<QLineEdit*>();
      line->selectAll();
      QTest::keyClicks(line, QStringLiteral("new @file@"));
      accept ? dialog->accept() : dialog->reject();
    });
    for (auto* action : window->actions()) {
      if (action->text() == QStringLiteral("Edit Caption...")) action->trigger();
    }
    const Names caption = {accept ? "new 1.jpg" : "1.jpg 1/3"};
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->Player().Shown().caption == caption; })) << accept;
  }
  EXPECT_EQ(window->State().formatString, "new @file@");
}

}  // namespace
}  // namespace ml::batch::ui
