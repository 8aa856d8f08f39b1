#include <fcntl.h>
#include <unistd.h>

#include <QAction>
#include <QScreen>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "app/command_actions.h"
#include "app/program_run.h"
#include "platform/data_folders.h"
#include "platform/overwrite_note.h"
#include "platform/paths.h"
#include "platform/temporary_name.h"

namespace ml::app {
namespace {

class Run : public ProgramRun {
 protected:
  Run() { AddPhotos(); }
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

TEST_F(Run, BrokenSettingsAreToldAndKept) {
  const auto file = home.Write("xdg/Tarnwick/Marrowlantern/100.toml", "ThumbnailSize = = 1\n");
  BoxReader reader;
  const EarlyBoxes early(reader);
  Launch({photos.Path()}, [&](CMainFrame& frame, Session& session) {
    EXPECT_EQ(session.list.Count(), 3);
    frame.Runner().Run(CommandId::Quit);
  });
  ASSERT_EQ(reader.texts.size(), 1U);
  EXPECT_NE(reader.texts[0].find(file), std::string::npos) << reader.texts[0];
  EXPECT_EQ(test::ReadAll(file + ".bad"), "ThumbnailSize = = 1\n");
  EXPECT_NE(SettingsText().find("MRU0"), std::string::npos);
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
