#include <sys/stat.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QStatusBar>
#include <QThread>
#include <filesystem>

#include "app/command_actions.h"
#include "app/jobs/transfer_job.h"
#include "app/main_display.h"
#include "app/picture_view.h"
#include "app/window_test.h"
#include "catalogue/ui/directory_tree.h"
#include "platform/errors.h"

namespace ml::app {
namespace {

namespace fs = std::filesystem;
using catalogue::TransferKind;
using platform::Button;

/// The window over five images, one with a note.
class FileOperations : public WindowTest {
 protected:
  FileOperations() {
    fs::create_directories(dir / "far");
    AddPhotos({"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"});
    dir.Write("day/2.txt", "note");
    Open();
  }

  CommandContext Context() { return {*session, frame->View(), *frame}; }
  catalogue::ui::DirectoryTree& Tree() { return *frame->findChild<catalogue::ui::DirectoryTree*>(); }
  bool ChooseInTree(const std::string& directory) {
    frame->View().SelectInTree(directory);
    const bool there = QTest::qWaitFor([&] { return Tree().Directory() == directory; }, 20'000);
    frame->activateWindow();
    static_cast<void>(QTest::qWaitForWindowActive(frame.get()));
    Tree().setFocus();
    frame->UpdateAll();
    return there;
  }
  /// Types `text` into the first line of the next dialog and presses OK.
  void TypeIntoNextDialog(const QString& text) {
    QTimer::singleShot(0, frame.get(), [text] {
      auto* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      auto* line = dialog->findChild<QLineEdit*>();
      line->selectAll();
      QTest::keyClicks(line, text);
      QTest::keyClick(line, Qt::Key_Return);
    });
  }
};

TEST_F(FileOperations, DeletedImagesLeaveTheListAndComeBackWithUndo) {
  session->settings.catalogue.confirmDelete = 0;
  session->list.SetTag(1, true);
  Select({1, 3});
  Run(CommandId::Delete);
  EXPECT_EQ(LastText(), "Are you sure you want to delete these 2 images?\n(by sending them to the Recycle Bin)");
  EXPECT_EQ(Files().size(), 5U) << "several are always asked for, and nobody said yes";
  ask.buttons = {Button::Yes};
  Run(CommandId::Delete);
  EXPECT_EQ(Files(), (Names{"1.jpg", "3.jpg", "5.jpg"}));
  EXPECT_FALSE(fs::exists(dir / "day/2.txt"));
  EXPECT_EQ(session->list.SelectedCount(), 1) << "the next key acts on what moved up";
  Run(CommandId::Undo);
  EXPECT_EQ(Files().size(), 5U);
  EXPECT_EQ(session->list.TaggedPaths(), Names{dir / "day/2.jpg"});
  EXPECT_EQ(test::ReadAll(dir / "day/2.txt"), "note");
  EXPECT_EQ(frame->statusBar()->currentMessage(), QStringLiteral("Undone: Delete (3 files)"));

  Select({1});
  Run(CommandId::Delete);
  AddPhotos({"2.jpg"});
  session->Images().RefreshDirectory();
  Select({1});
  Run(CommandId::RotateRight);
  Run(CommandId::Undo);
  EXPECT_EQ(frame->statusBar()->currentMessage(), QStringLiteral("Undone: Rotate Image (1 file)"));
  EXPECT_EQ(session->list.TaggedCount(), 0) << "another image of that name";
  ask.buttons = {Button::Yes};
  Select({0});
  Run(CommandId::DeletePermanently);
  EXPECT_EQ(Files().front(), "2.jpg");
  EXPECT_TRUE(frame->statusBar()->currentMessage().contains(QStringLiteral("cannot be undone")));
}

TEST_F(FileOperations, AMovedImageStaysWhereTheUserSkippedIt) {
  dir.Write("far/2.jpg", "other");
  auto context = Context();
  ask.fileAnswers = {platform::FileExistsAnswer::Skip};
  RunTransfer(context, TransferKind::Move, dir / "far", {dir / "day/1.jpg", dir / "day/2.jpg", dir / "day/5.jpg"});
  EXPECT_EQ(Files(), (Names{"2.jpg", "3.jpg", "4.jpg"}));
  EXPECT_EQ(test::ReadAll(dir / "far/2.jpg"), "other");
  EXPECT_TRUE(session->list.ValidIndex(session->list.currentIndex));
  Run(CommandId::Undo);
  EXPECT_EQ(Files().size(), 5U);
  EXPECT_FALSE(fs::exists(dir / "far/1.jpg"));
}

TEST_F(FileOperations, WhatFailsHalfWayKeepsTheEntriesThatAreThere) {
  fs::create_directories(dir / "far/3.jpg");
  auto context = Context();
  const Names all{dir / "day/1.jpg", dir / "day/3.jpg", dir / "day/5.jpg"};
  EXPECT_THROW(RunTransfer(context, TransferKind::Move, dir / "far", all), platform::UserError);
  EXPECT_EQ(Files(), (Names{"2.jpg", "3.jpg", "4.jpg", "5.jpg"}));
  EXPECT_TRUE(fs::is_regular_file(dir / "far/1.jpg"));
}

TEST_F(FileOperations, CancelledJobEndsBehindTheImageItIsAt) {
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [] {
    auto* window = QApplication::activeModalWidget();
    if (window != nullptr && window->objectName() == QLatin1String("jobWindow"))
      qobject_cast<QDialog*>(window)->reject();
  });
  timer.start(20);
  auto context = Context();
  Names done;
  RunImageJob(context, {.title = "Move Images",
                        .progressVerb = "Moving",
                        .paths = session->list.files,
                        .act = [&](const std::string& path, const ImageJobTools& tools) {
                          while (done.size() == 1 && !tools.stop.stop_requested()) QThread::msleep(5);
                          done.push_back(path);
                        }});
  EXPECT_EQ(done, (Names{dir / "day/1.jpg", dir / "day/2.jpg"}));
  EXPECT_EQ(frame->statusBar()->currentMessage(), QStringLiteral("Move Images: cancelled"));
}

TEST_F(FileOperations, DroppedFilesGoOnceWithTheirCompanions) {
  dir.Write("card/a.crw", "raw");
  dir.Write("card/a.thm", "thm");
  dir.Write("card/a.txt", "note");
  dir.Write("card/read me.pdf", "no image");
  auto context = Context();
  Names files;
  for (const auto* name : {"a.thm", "a.crw", "a.txt", "read me.pdf"})
    files.push_back(dir / ("card/" + std::string(name)));
  TransferDropped(context, TransferKind::Copy, dir / "day", files);
  EXPECT_EQ(test::ReadAll(dir / "day/a.thm"), "thm");
  EXPECT_EQ(Files().size(), 6U) << "the directory on show has it at once";
  EXPECT_FALSE(fs::exists(dir / "day/read me.pdf"));
  EXPECT_TRUE(fs::exists(dir / "card/a.crw"));
  EXPECT_THROW(TransferDropped(context, TransferKind::Move, dir / "far", {dir / "card/read me.pdf"}),
               platform::UserError);
  EXPECT_THROW(TransferDropped(context, TransferKind::Move, dir / "card", {dir / "card/a.crw"}), platform::UserError);
}

TEST_F(FileOperations, RenamingKeepsPlaceSelectionAndThumbnails) {
  ASSERT_TRUE(QTest::qWaitFor([&] { return session->Worker().FinishedCount() == 5; }, 30'000));
  Select({1, 3});
  const std::pair<const char*, const char*> renames[] = {{"9", "9.jpg"}, {"nine", "nine.jpg"}, {"Nine", "Nine.jpg"}};
  for (const auto& [typed, name] : renames) {
    TypeIntoNextDialog(QString::fromLatin1(typed));
    Run(CommandId::RenameImage);
    EXPECT_EQ(Files(), (Names{"1.jpg", name, "3.jpg", "4.jpg", "5.jpg"}));
    EXPECT_EQ(test::ReadAll(dir / ("day/" + std::string(typed) + ".txt")), "note");
  }
  EXPECT_EQ(session->list.SelectedIndices(), (std::vector<int>{1, 3}));
  EXPECT_EQ(session->list.focusIndex, 1);
  EXPECT_EQ(session->Worker().FinishedCount(), 5) << "no thumbnail is made again";
  Run(CommandId::MainView);
  TypeIntoNextDialog(QStringLiteral("first"));
  Run(CommandId::RenameImage);
  EXPECT_EQ(session->list.currentPath.substr(session->list.currentPath.rfind('/')), "/first.jpg");
  EXPECT_EQ(frame->windowTitle().toStdString(), "first.jpg - Marrowlantern");
}

TEST_F(FileOperations, EditMenuTellsWhatUndoTakesBack) {
  auto* menu = frame->Actions().MenuOf(Menu::Edit);
  const auto* undo = frame->Actions().At(CommandId::Undo);
  Q_EMIT menu->aboutToShow();
  EXPECT_FALSE(undo->isEnabled());
  Q_EMIT menu->aboutToHide();
  EXPECT_TRUE(undo->isEnabled()) << "for its key";
  auto context = Context();
  RunTransfer(context, TransferKind::Copy, dir / "far", {dir / "day/1.jpg"});
  Q_EMIT menu->aboutToShow();
  EXPECT_TRUE(undo->isEnabled());
  EXPECT_EQ(undo->text(), QStringLiteral("&Undo Copy Images"));
}

TEST_F(FileOperations, FoldersAreMadeRenamedAndDeletedInTheTree) {
  ASSERT_TRUE(ChooseInTree(dir / "far"));
  const auto* rename = frame->Actions().At(CommandId::RenameFolder);
  EXPECT_TRUE(rename->isEnabled());
  Tree().setCurrentIndex({});
  EXPECT_TRUE(QTest::qWaitFor([&] { return !rename->isEnabled(); }, 20'000)) << "the commands follow the tree's row";
  ASSERT_TRUE(ChooseInTree(dir / "far"));
  TypeIntoNextDialog(QStringLiteral("new"));
  Run(CommandId::NewFolder);
  EXPECT_TRUE(fs::is_directory(dir / "far/new"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Tree().Directory() == dir / "far/new"; }, 20'000));
  EXPECT_EQ(session->Images().Directory(), dir / "day") << "an empty folder is not what one wants to look at";
  ASSERT_TRUE(ChooseInTree(dir / "far"));
  TypeIntoNextDialog(QStringLiteral("new"));
  Run(CommandId::NewFolder);
  EXPECT_TRUE(LastText().starts_with("Error creating folder:\n" + (dir / "far/new"))) << LastText();
  EXPECT_EQ(ask.shown.back().caption, "Error");

  session->list.SetTag(2, true);
  ASSERT_TRUE(ChooseInTree(dir / "day"));
  TypeIntoNextDialog(QStringLiteral("far"));
  Run(CommandId::RenameFolder);
  EXPECT_EQ(LastText().substr(LastText().size() - 4), "/far") << LastText();
  EXPECT_EQ(session->Images().Directory(), dir / "day") << "nothing was renamed";
  EXPECT_TRUE(QTest::qWaitFor([&] { return Tree().Directory() == dir / "day"; }, 20'000));
  TypeIntoNextDialog(QStringLiteral("night"));
  Run(CommandId::RenameFolder);
  EXPECT_EQ(session->Images().Directory(), dir / "night");
  EXPECT_EQ(session->list.TaggedPaths(), Names{dir / "night/3.jpg"});
  dir.Write("night/later.txt", "does not stand in the way of undo");
  Run(CommandId::Undo);
  EXPECT_TRUE(fs::exists(dir / "day/later.txt"));

  session->Images().LoadDirectory(dir / "day", "");
  ASSERT_TRUE(ChooseInTree(dir / "day"));
  ask.buttons = {Button::Yes};
  Run(CommandId::Delete);
  EXPECT_NE(LastText().find(dir / "day"), std::string::npos) << LastText();
  EXPECT_FALSE(fs::exists(dir / "day"));
  EXPECT_EQ(session->Images().Directory() + "/", dir / "");
  Run(CommandId::Undo);
  EXPECT_EQ(test::ReadAll(dir / "day/2.txt"), "note");
}

TEST_F(FileOperations, WheelWithControlTurnsTheImage) {
  Run(CommandId::MainView);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !frame->View().Display().Busy(); }, 30'000));
  const auto before = test::ReadAll(dir / "day/1.jpg");
  Q_EMIT frame->findChild<PictureView*>()->wheelTurned(-1, Qt::ControlModifier);
  EXPECT_NE(test::ReadAll(dir / "day/1.jpg"), before) << LastText();
  Q_EMIT frame->findChild<PictureView*>()->wheelTurned(1, Qt::ControlModifier);
  EXPECT_EQ(Files().size(), 5U);
}

}  // namespace
}  // namespace ml::app
