#include <unistd.h>

#include <QAction>
#include <QCheckBox>
#include <QTreeWidget>

#include "app/command_actions.h"
#include "app/histogram_display.h"
#include "app/picture_view.h"
#include "app/program_run.h"
#include "app/summary_pane.h"
#include "imagefiles/ui/histogram_panel.h"
#include "imagefiles/ui/histogram_window.h"
#include "imagefiles/ui/shooting_data_window.h"

namespace ml::app {
namespace {

/// What the program shows of the current image.
class DisplayRun : public ProgramRun {
 protected:
  DisplayRun() { AddPhotos(); }
};

TEST_F(DisplayRun, BrokenPictureSaysSoAndTheHistogramFollows) {
  photos.Write("img_0.jpg", "no picture");
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    const auto& panel = *frame.findChild<imagefiles::ui::HistogramPanel*>();
    EXPECT_FALSE(panel.isVisible());
    RunAndAwait(frame, CommandId::MainView);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.accessibleDescription().toStdString(), "Nothing to show");
    EXPECT_NE(frame.findChild<PictureView*>()->accessibleDescription(), QString()) << "why there is no picture";
    session.settings.display.histogramRed = 0;
    session.settings.display.histogramIntensity = 0;
    RunAndAwait(frame, CommandId::NextImage);
    EXPECT_EQ(panel.accessibleDescription().toStdString(), "Levels from black to white: green, blue");
    EXPECT_EQ(frame.findChild<PictureView*>()->accessibleDescription(), QString());
    RunAndAwait(frame, CommandId::PreviousImage);
    EXPECT_EQ(panel.accessibleDescription().toStdString(), "Nothing to show");
    frame.Runner().Run(CommandId::ShowControls);
    EXPECT_FALSE(panel.isVisible());
  });
}

TEST_F(DisplayRun, KeysGoOnFromTheImageAskedForLast) {
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    RunAndAwait(frame, CommandId::MainView);
    frame.View().Display().Gate().Pause();
    frame.Runner().Run(CommandId::NextImage);
    frame.Runner().Run(CommandId::NextImage);
    EXPECT_EQ(session.list.currentPath, photos / "img_10.jpg");
    frame.View().Display().Gate().Resume();
    AwaitPicture(frame);
    EXPECT_EQ(session.current.width, 300);
  });
}

TEST_F(DisplayRun, ThePictureOnShowStaysUntilTheNextIsReady) {
  photos.Write("img_2.jpg", test::MakePhoto({.width = 200, .height = 300}));
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    RunAndAwait(frame, CommandId::MainView);
    auto& gate = frame.View().Display().Gate();
    gate.Pause();
    frame.View().Display().ForgetAll();
    frame.Runner().Run(CommandId::NextImage);
    QTest::qWait(200);
    EXPECT_EQ(session.current.width, 300);
    EXPECT_EQ(QApplication::overrideCursor() ? QApplication::overrideCursor()->shape() : Qt::ArrowCursor,
              Qt::WaitCursor);
    gate.Resume();
    AwaitPicture(frame);
    EXPECT_EQ(session.current.width, 200);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    ::unlink((photos / "img_2.jpg").c_str());
    frame.View().ReloadImage();
    AwaitPicture(frame);
    EXPECT_EQ(session.current.width, 0);
    EXPECT_EQ(frame.findChild<PictureView*>()->accessibleDescription().toStdString(),
              "No such image: " + (photos / "img_2.jpg"));
  });
}

TEST_F(DisplayRun, FlashingHighlightsLeaveTheReadOutAlone) {
  photos.Write("img_0.jpg", test::EncodeJpeg(test::PaintPlain(300, 200, 0xffffff)));
  Start({photos.Path()}, [&](CMainFrame& frame, Session&) {
    RunAndAwait(frame, CommandId::MainView);
    RunAndAwait(frame, CommandId::ShowFlashingHighlights);
    EXPECT_TRUE(frame.Actions().At(CommandId::ShowFlashingHighlights)->isChecked());
    auto& view = *frame.findChild<PictureView*>();
    const auto middle = [&] { return view.grab().toImage().pixelColor(view.rect().center()); };
    QString told;
    QObject::connect(&view, &PictureView::colourUnderMouse, [&](const QString& text) { told = text; });
    EXPECT_EQ(middle(), QColor(Qt::white));
    ASSERT_TRUE(QTest::qWaitFor([&] { return middle() == QColor(Qt::black); }, 5'000));
    QTest::mouseMove(&view, view.rect().center());
    EXPECT_EQ(told.toStdString(), "RGB: 255,255,255");
    ASSERT_TRUE(QTest::qWaitFor([&] { return middle() == QColor(Qt::white); }, 5'000));
  });
  EXPECT_NE(SettingsText().find("HighlightBlink = 1"), std::string::npos);
}

TEST_F(DisplayRun, HistogramWindowComesAndGoesWithTheMode) {
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    auto* command = frame.Actions().At(CommandId::Histogram);
    EXPECT_FALSE(command->isEnabled());
    RunAndAwait(frame, CommandId::MainView);
    EXPECT_EQ(command->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_A));
    command->trigger();
    auto* window = frame.findChild<imagefiles::ui::HistogramWindow*>();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(command->isChecked());
    window->findChildren<QCheckBox*>().at(1)->click();
    EXPECT_EQ(session.settings.display.histogramGreen, 0);
    const auto shown = frame.findChild<imagefiles::ui::HistogramPanel*>()->accessibleDescription();
    EXPECT_EQ(shown.toStdString(), "Levels from black to white: red, blue, intensity");
    window->move(40, 50);
    frame.Runner().Run(CommandId::ThumbnailView);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(command->shortcuts().isEmpty()) << "the key selects everything there";
    frame.Runner().Run(CommandId::MainView);
    EXPECT_TRUE(window->isVisible());
    window->close();
    EXPECT_FALSE(command->isChecked());
  });
  EXPECT_NE(SettingsText().find("HistogramDlgXpos = 40"), std::string::npos) << SettingsText();
}

TEST_F(DisplayRun, ShootingDataWindowFollowsTheImageInEveryMode) {
  using imagefiles::ui::ShootingDataWindow;
  photos.Write("img_2.jpg", test::MakePhoto({.width = 300, .height = 200, .model = "Second"}));
  Start({photos.Path()}, [&](CMainFrame& frame, Session&) {
    auto& list = Thumbnails(frame);
    QTest::keyClick(&list, Qt::Key_Home);
    auto* command = frame.Actions().At(CommandId::ShootingData);
    command->trigger();
    auto* window = frame.findChild<ShootingDataWindow*>();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(command->isChecked());
    const auto& tree = *window->findChild<QTreeWidget*>();
    const auto model = [&] {
      const auto rows = tree.findItems(QStringLiteral("Camera Model"), Qt::MatchExactly | Qt::MatchRecursive);
      return rows.isEmpty() ? std::string() : rows.first()->text(1).toStdString();
    };
    EXPECT_EQ(model(), "Sample");
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("img_1.jpg"))) << "the first by number";
    for (const auto mode : {CommandId::ThumbnailView, CommandId::FilmStripSide, CommandId::MainView}) {
      SCOPED_TRACE(static_cast<int>(mode));
      RunAndAwait(frame, mode);
      const auto go = [&](bool forward) {
        if (mode == CommandId::MainView) {
          frame.Runner().Run(forward ? CommandId::NextImage : CommandId::PreviousImage);
        } else {
          QTest::keyClick(&list, forward ? Qt::Key_Right : Qt::Key_Left);
        }
      };
      QTest::qWait(300);
      go(true);
      EXPECT_EQ(model(), "Second") << "at once after a rest";
      go(true);
      go(false);
      EXPECT_EQ(tree.topLevelItemCount(), 0) << "nothing while images go past";
      EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("img_2.jpg")));
      EXPECT_TRUE(QTest::qWaitFor([&] { return model() == "Second"; }, 5'000));
      QTest::qWait(300);
      go(false);
      EXPECT_EQ(model(), "Sample");
    }
    photos.Write("img_1.jpg", test::MakePhoto({.width = 310, .height = 200, .model = "Rewritten"}));
    frame.Runner().Run(CommandId::TagImage);
    EXPECT_EQ(model(), "Rewritten");
    window->resize(333, 444);
    window->move(60, 70);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(command->isChecked());
    frame.Runner().Run(CommandId::ImageProperties);
    EXPECT_TRUE(window->isVisible());
  });
  const auto kept = SettingsText();
  for (const auto* line : {"ExifDlgXpos = 60", "ExifDlgYpos = 70", "ExifDlgWidth = 333", "ExifDlgHeight = 444"}) {
    EXPECT_NE(kept.find(line), std::string::npos) << kept;
  }
  Start({photos.Path()}, [&](CMainFrame& frame, Session&) {
    EXPECT_EQ(frame.findChild<ShootingDataWindow*>(), nullptr);
    frame.Runner().Run(CommandId::ShootingData);
    EXPECT_EQ(frame.findChild<ShootingDataWindow*>()->pos(), QPoint(60, 70));
    EXPECT_EQ(frame.findChild<ShootingDataWindow*>()->size(), QSize(333, 444));
  });
}

TEST_F(DisplayRun, SummaryFollowsTheFocusAndTheFile) {
  photos.Write("img_2.jpg", test::MakePhoto({.width = 300, .height = 200, .dateTime = "2004:02:03 04:05:06"}));
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    const auto shown = [&] {
      for (const auto* pane : frame.findChildren<SummaryPane*>()) {
        if (pane->isVisible()) return pane->toPlainText().toStdString();
      }
      return std::string("no pane");
    };
    auto& list = Thumbnails(frame);
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_TRUE(shown().starts_with("2003:05:17 10:11:12\nFile size: ")) << shown();
    EXPECT_TRUE(shown().ends_with("\nImage size: 300 x 200")) << shown();
    QTest::keyClick(&list, Qt::Key_Right);
    EXPECT_TRUE(shown().starts_with("2004:02:03 04:05:06")) << shown();
    frame.Runner().Run(CommandId::MainView);
    EXPECT_EQ(session.list.currentPath, photos / "img_2.jpg");
    EXPECT_TRUE(shown().starts_with("2004:02:03 04:05:06")) << shown();

    photos.Write("img_2.jpg", test::MakePhoto({.width = 310, .height = 200, .dateTime = "2005:02:03 04:05:06"}));
    frame.Runner().Run(CommandId::TagImage);
    EXPECT_TRUE(shown().starts_with("2005:02:03 04:05:06")) << "read again without being asked: " << shown();
  });
}

}  // namespace
}  // namespace ml::app
