#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>

#include "app/application.h"
#include "app/command_actions.h"
#include "app/histogram_display.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/picture_view.h"
#include "app/session.h"
#include "app/summary_pane.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "imagefiles/ui/histogram_panel.h"
#include "imagefiles/ui/histogram_window.h"
#include "imagefiles/ui/shooting_data_window.h"
#include "platform/data_folders.h"
#include "platform/overwrite_note.h"
#include "platform/paths.h"
#include "platform/temporary_name.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

using Names = std::vector<std::string>;

/// Presses OK on each box that comes up and keeps its text.
class BoxReader {
 public:
  void Start() {
    timer_ = std::make_unique<QTimer>();
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      texts.push_back(box->text().toStdString());
      box->accept();
    });
    timer_->start(20);
  }
  Names texts;

 private:
  std::unique_ptr<QTimer> timer_;
};

class Run : public testing::Test {
 protected:
  Run() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    for (const auto* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
      ::setenv(variable, (home / "xdg").c_str(), 1);
    }
    for (const auto* name : {"img_2.jpg", "img_10.jpg", "img_1.jpg"}) {
      photos.Write(name, test::MakePhoto({.width = 300, .height = 200}));
    }
  }

  /// One run of the program; `act` runs after the first load and sees to it that the program ends.
  int Launch(const Names& names, const std::function<void(CMainFrame&, Session&)>& act) {
    Names arguments{"marrowlantern"};
    arguments.insert(arguments.end(), names.begin(), names.end());
    std::vector<char*> argv;
    for (auto& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    int argc = static_cast<int>(arguments.size());
    return RunApplication(argc, argv.data(), act);
  }
  /// The same with boxes answered and "Quit" at the end.
  void Start(const Names& names, const std::function<void(CMainFrame&, Session&)>& act) {
    Launch(names, [&](CMainFrame& frame, Session& session) {
      BoxReader reader;
      reader.Start();
      act(frame, session);
      boxes = reader.texts;
      frame.Runner().Run(CommandId::Quit);
    });
  }

  static Names FilesOf(const Session& session) {
    Names names;
    for (const auto& path : session.list.files) names.push_back(path.substr(path.rfind('/') + 1));
    return names;
  }
  static catalogue::ui::ThumbnailListView& Thumbnails(CMainFrame& frame) {
    return *frame.findChild<catalogue::ui::ThumbnailListView*>();
  }
  /// Until the picture of the current image shows.
  static void AwaitPicture(CMainFrame& frame) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !frame.View().Display().Busy(); }, 30'000));
  }
  static void RunAndAwait(CMainFrame& frame, CommandId id) {
    frame.Runner().Run(id);
    AwaitPicture(frame);
  }
  std::string SettingsText() const { return test::ReadAll(home / "xdg/Tarnwick/Marrowlantern/100.toml").value_or(""); }

  test::TempDir home, photos;
  Names boxes;
};

TEST_F(Run, ShowsTagsAndRemembers) {
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    EXPECT_EQ(FilesOf(session), (Names{"img_1.jpg", "img_2.jpg", "img_10.jpg"}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.Worker().FinishedCount() == 3; }, 30'000));
    EXPECT_EQ(session.Worker().State(1), catalogue::ThumbnailState::Done);

    auto& list = Thumbnails(frame);
    EXPECT_EQ(frame.focusWidget(), &list);
    QTest::keyClick(&list, Qt::Key_Right);
    EXPECT_EQ(session.list.focusIndex, 1);
    QTest::keyClick(&list, Qt::Key_Space);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(session.mode, ViewMode::Main);
    EXPECT_EQ(session.list.currentPath, photos / "img_2.jpg");
    AwaitPicture(frame);
    EXPECT_EQ(session.current.width, 300);
    EXPECT_EQ(session.current.histogram.pixelCount, 300U * 200U);
    EXPECT_TRUE(frame.Actions().At(CommandId::TagImage)->isChecked());
    EXPECT_EQ(frame.windowTitle().toStdString(), "img_2.jpg - Marrowlantern");

    frame.Actions().At(CommandId::NextImage)->trigger();
    EXPECT_EQ(session.list.currentPath, photos / "img_10.jpg");
    EXPECT_FALSE(frame.Actions().At(CommandId::NextImage)->isEnabled());
    frame.Actions().At(CommandId::ReverseSortOrder)->trigger();
    frame.resize(701, 602);
  });
  EXPECT_EQ(test::ReadAll(photos / "tagged_files.txt"), "img_2.jpg\r\n");
  const auto order = test::ReadAll(photos / "marrowlantern.dat").value_or("");
  EXPECT_NE(order.find("order=\"numeric\" reverse=\"1\""), std::string::npos) << order;
  EXPECT_NE(SettingsText().find("img_10.jpg"), std::string::npos) << SettingsText();

  Start({}, [&](CMainFrame& frame, Session& session) {
    EXPECT_EQ(FilesOf(session), (Names{"img_10.jpg", "img_2.jpg", "img_1.jpg"}));
    EXPECT_EQ(session.mode, ViewMode::Main);
    EXPECT_EQ(session.list.currentPath, photos / "img_10.jpg");
    EXPECT_EQ(session.list.TaggedPaths(), Names{photos / "img_2.jpg"});
    EXPECT_EQ(session.settings.recentDirectories, Names{photos.Path()});
    EXPECT_EQ(frame.size(), QSize(701, 602));
  });
  std::filesystem::remove(photos / "img_10.jpg");
  Start({}, [&](CMainFrame&, Session& session) { EXPECT_EQ(session.list.currentPath, photos / "img_2.jpg"); });
  std::filesystem::remove_all(photos.Path());
  Start({}, [&](CMainFrame&, Session& session) { EXPECT_TRUE(session.list.Empty()); });
  EXPECT_TRUE(boxes.empty()) << "what is gone is passed over";
}

TEST_F(Run, ShowsExactlyTheNamedFiles) {
  photos.Write("notes.txt", "x");
  Start({photos / "img_10.jpg", photos / "gone.jpg", photos / "notes.txt", photos / "img_2.jpg"},
        [&](CMainFrame&, Session& session) {
          EXPECT_EQ(FilesOf(session), (Names{"img_2.jpg", "img_10.jpg"}));
          EXPECT_EQ(session.list.currentIndex, 0);
          EXPECT_EQ(session.list.focusIndex, 0);
          EXPECT_EQ(session.list.SelectedCount(), 1);
        });
}

TEST_F(Run, WindowComesBackWhollyOnTheScreen) {
  struct Case {
    const char* name;
    int left, top, right, bottom;
  };
  const Case cases[] = {{"of a larger screen", 300, 200, 4300, 2700},
                        {"of a screen that is gone", -3000, 50, -2100, 700},
                        {"inside out", 500, 400, 100, 100}};
  Start({photos.Path()}, [&](CMainFrame& frame, Session&) {
    const QRect room = frame.screen()->availableGeometry();
    settings::WindowSettings place;
    const auto restored = [&](const Case& c) {
      place.left = c.left, place.top = c.top, place.right = c.right, place.bottom = c.bottom;
      frame.RestorePlace(place);
      return QRect(frame.pos(), frame.size());
    };
    for (const auto& c : cases) {
      const QRect window = restored(c);
      EXPECT_TRUE(room.contains(window)) << c.name;
      EXPECT_GE(window.width(), room.width() / 2) << c.name;
    }
    EXPECT_EQ(restored({"as it was", 10, 20, 610, 520}), QRect(10, 20, 600, 500));
    place = {};
    frame.RestorePlace(place);
    EXPECT_TRUE(room.contains(QRect(room.topLeft(), frame.size())));
  });
}

TEST_F(Run, TellsOfDirectoriesThatAreNone) {
  const auto file = photos / "img_1.jpg";
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    session.settings.recentDirectories = {photos / "gone", file};
    frame.Runner().Run(CommandId::RecentDirectory, 0);
    frame.Runner().Run(CommandId::RecentDirectory, 1);
    EXPECT_EQ(session.list.Count(), 3);
  });
  EXPECT_EQ(boxes, (Names{"Directory does not exist:\n" + (photos / "gone"), file + "\nis not a directory"}));
}

TEST_F(Run, BrokenPictureSaysSoAndCanBeLeft) {
  photos.Write("img_0.jpg", "no picture");
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    RunAndAwait(frame, CommandId::MainView);
    EXPECT_EQ(session.current.width, 0);
    EXPECT_NE(frame.findChild<PictureView*>()->accessibleDescription(), QString());
    RunAndAwait(frame, CommandId::NextImage);
    EXPECT_EQ(session.current.width, 300);
    EXPECT_EQ(frame.findChild<PictureView*>()->accessibleDescription(), QString());
  });
  EXPECT_TRUE(boxes.empty());
}

TEST_F(Run, HistogramFollowsThePictureAndTheSettings) {
  photos.Write("img_0.jpg", "no picture");
  Start({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    const auto& panel = *frame.findChild<imagefiles::ui::HistogramPanel*>();
    EXPECT_FALSE(panel.isVisible());
    RunAndAwait(frame, CommandId::MainView);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.accessibleDescription().toStdString(), "Nothing to show");
    session.settings.display.histogramRed = 0;
    session.settings.display.histogramIntensity = 0;
    RunAndAwait(frame, CommandId::NextImage);
    EXPECT_EQ(panel.accessibleDescription().toStdString(), "Levels from black to white: green, blue");
    RunAndAwait(frame, CommandId::PreviousImage);
    EXPECT_EQ(panel.accessibleDescription().toStdString(), "Nothing to show");
    frame.Runner().Run(CommandId::ShowControls);
    EXPECT_FALSE(panel.isVisible());
  });
}

TEST_F(Run, KeysGoOnFromTheImageAskedForLast) {
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

TEST_F(Run, ThePictureOnShowStaysUntilTheNextIsReady) {
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

TEST_F(Run, FlashingHighlightsLeaveTheReadOutAlone) {
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

TEST_F(Run, HistogramWindowComesAndGoesWithTheMode) {
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

TEST_F(Run, ShootingDataWindowFollowsTheImageInEveryMode) {
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

TEST_F(Run, SummaryFollowsTheFocusAndTheFile) {
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

TEST_F(Run, SignalEndsInOrder) {
  const int code = Launch({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    session.list.SelectAll();
    frame.Runner().Run(CommandId::TagSelected);
    ::kill(::getpid(), SIGTERM);
    // A box in the way that nobody answers must not hold up the end.
    QMessageBox(&frame).exec();
  });
  EXPECT_EQ(code, 0);
  EXPECT_EQ(test::ReadAll(photos / "tagged_files.txt"), "img_1.jpg\r\nimg_2.jpg\r\nimg_10.jpg\r\n");
  EXPECT_NE(SettingsText().find("img_1.jpg"), std::string::npos);
}

TEST_F(Run, BrokenSettingsAreToldAndKept) {
  const auto file = home.Write("xdg/Tarnwick/Marrowlantern/100.toml", "ThumbnailSize = = 1\n");
  testing::internal::CaptureStderr();
  Start({photos.Path()}, [](CMainFrame&, Session& session) { EXPECT_EQ(session.list.Count(), 3); });
  EXPECT_NE(testing::internal::GetCapturedStderr().find(file), std::string::npos);
  EXPECT_EQ(test::ReadAll(file + ".bad"), "ThumbnailSize = = 1\n");
  EXPECT_NE(SettingsText().find("MRU0"), std::string::npos);
}

BoxReader* earlyReader = nullptr;

/// Reads boxes that come before there is a window that could tell of itself.
class EarlyBoxes {
 public:
  explicit EarlyBoxes(BoxReader& reader) {
    static const bool known = [] {
      qAddPreRoutine([] {
        if (earlyReader) earlyReader->Start();
      });
      return true;
    }();
    static_cast<void>(known);
    earlyReader = &reader;
  }
  ~EarlyBoxes() { earlyReader = nullptr; }
};

/// Leaves `target` as a run does that was killed when the new content was about to be copied over it.
void InterruptOverwrite(const std::string& target, const std::string& oldContent, const std::string& newContent) {
  auto& files = platform::RealFileSystem();
  const auto temporary = platform::NewTemporaryName();
  platform::OverwriteNote note{
      .target = target,
      .copy = platform::JoinPath(platform::DirectoryOf(target), platform::CopyNameOf(temporary)),
      .newSize = newContent.size()};
  std::ofstream(target) << oldContent;
  std::ofstream(note.copy) << newContent;
  platform::DescribeOldContent(platform::OpenRegular(files, target, O_RDONLY), note);
  const auto directory = platform::OverwriteNoteDirectory(platform::userStateDir());
  std::filesystem::create_directories(directory);
  platform::WriteOverwriteNote(files, note, platform::JoinPath(directory, temporary));
}

TEST_F(Run, FinishesAndTellsWhatACrashCutOff) {
  InterruptOverwrite(photos / "tagged_files.txt", "img_1.jpg\r\n", "img_2.jpg\r\n");
  BoxReader reader;
  const EarlyBoxes early(reader);
  Launch({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    EXPECT_EQ(session.list.TaggedPaths(), Names{photos / "img_2.jpg"});
    frame.Runner().Run(CommandId::Quit);
  });
  EXPECT_EQ(reader.texts, Names{"A change that was cut off has been finished:\n" + (photos / "tagged_files.txt")});
}

TEST_F(Run, WrongOptionEndsBeforeAnythingIsWritten) {
  BoxReader reader;
  const EarlyBoxes early(reader);
  const int code = Launch({"-x", photos.Path()}, [](CMainFrame&, Session&) { FAIL() << "the program went on"; });
  EXPECT_NE(code, 0);
  ASSERT_EQ(reader.texts.size(), 1U);
  EXPECT_TRUE(reader.texts[0].starts_with("Usage: marrowlantern [-a<#cpu>]")) << reader.texts[0];
  EXPECT_FALSE(test::ReadAll(photos / "marrowlantern.dat"));
  EXPECT_EQ(SettingsText(), "");
}

}  // namespace
}  // namespace ml::app
