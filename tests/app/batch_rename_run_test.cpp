#include <QPushButton>
#include <QStatusBar>
#include <filesystem>

#include "app/window_test.h"
#include "batch/ui/batch_rename_dialog.h"

namespace ml::app {
namespace {

namespace fs = std::filesystem;

/// The window over five images, of which the first has a note.
class BatchRenameRun : public WindowTest {
 protected:
  BatchRenameRun() {
    const Names names{"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"};
    AddPhotos(names);
    for (const auto& name : names) inodes.push_back(Inode(Day(name)));
    dir.Write("day/1.txt", "note");
    settings::Settings settings;
    settings.rename = {.sortMethod = 3, .style = 7};
    settings.rename.formatString = "%n";
    settings.rename.digits = 1;
    Open(settings);
  }

  static ino_t Inode(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_ino;
  }
  /// For each file on disk, in the order of the names "1" to "5" that they began with.
  Names NamesByInode() const {
    Names names(inodes.size());
    for (const auto& entry : fs::directory_iterator(dir / "day")) {
      const auto found = std::ranges::find(inodes, Inode(entry.path()));
      if (found != inodes.end()) names[static_cast<std::size_t>(found - inodes.begin())] = entry.path().filename();
    }
    return names;
  }
  /// Runs the command; `use` gets its dialog and ends it.
  void Rename(const std::function<void(batch::ui::CBatchRenameDialog&)>& use) {
    EXPECT_TRUE(RunWithDialog<batch::ui::CBatchRenameDialog>(CommandId::BatchRename, use));
  }
  /// In the order on show, 1 to 5.
  void PutInReverse() {
    auto& list = session->list;
    for (int i = 0; i < 4; ++i) {
      list.SelectOnly(4);
      session->Images().MoveSelectedTo(i);
    }
    ASSERT_EQ(Files(), (Names{"5.jpg", "4.jpg", "3.jpg", "2.jpg", "1.jpg"}));
  }

  std::vector<ino_t> inodes;
};

TEST_F(BatchRenameRun, SwapsNamesWithMarksAndOrderAndUndoesItAll) {
  PutInReverse();
  auto& list = session->list;
  list.SetTagByPath(dir / "day/1.jpg", true);
  list.SelectAll();
  list.focusIndex = 4;
  frame->View().LoadImage(4, Reload::Force);
  Rename([](auto& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  EXPECT_EQ(NamesByInode(), (Names{"5.jpg", "4.jpg", "3.jpg", "2.jpg", "1.jpg"}));
  EXPECT_EQ(test::ReadAll(dir / "day/5.txt"), "note");
  EXPECT_EQ(Files(), (Names{"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"})) << "the custom order goes with the files";
  EXPECT_EQ(list.TaggedPaths(), Names{dir / "day/5.jpg"});
  EXPECT_EQ(list.currentPath, dir / "day/5.jpg");
  EXPECT_EQ(list.SelectedCount(), 5);
  EXPECT_EQ(list.focusIndex, 4);
  EXPECT_EQ(session->settings.rename.firstNumber1, 6);
  EXPECT_EQ(session->settings.rename.firstNumber, 6) << "the others go on there too";
  EXPECT_EQ(session->settings.rename.firstNumber2, 1);
  EXPECT_FALSE(session->settings.dialogPlaces["BatchRename"].empty());

  frame->Runner().Run(CommandId::Undo);
  EXPECT_EQ(NamesByInode(), (Names{"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"}));
  EXPECT_EQ(test::ReadAll(dir / "day/1.txt"), "note");
  EXPECT_EQ(Files(), (Names{"5.jpg", "4.jpg", "3.jpg", "2.jpg", "1.jpg"}));
  EXPECT_EQ(list.TaggedPaths(), Names{dir / "day/1.jpg"});
  EXPECT_EQ(list.currentPath, dir / "day/1.jpg");
  EXPECT_TRUE(ask.shown.empty());
}

TEST_F(BatchRenameRun, TakesTheSelectionWhereItIsSeen) {
  session->list.SelectOnly(1);
  const auto before = session->settings.rename;
  Rename([](auto& dialog) {
    EXPECT_EQ(dialog.Names().rows.size(), 1U);
    dialog.reject();
  });
  EXPECT_EQ(session->settings.rename.firstNumber1, before.firstNumber1);
  frame->Runner().Run(CommandId::MainView);
  Rename([](auto& dialog) {
    EXPECT_EQ(dialog.Names().rows.size(), 5U);
    dialog.reject();
  });
  EXPECT_EQ(NamesByInode(), (Names{"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"}));
}

TEST_F(BatchRenameRun, StopsWhereAFileVanished) {
  session->settings.rename.formatString = "x%n";
  session->list.SelectAll();
  Rename([&](auto& dialog) {
    EXPECT_EQ(fs::remove(dir / "day/3.jpg"), true);
    dialog.QDialog::accept();  // past the checks
  });
  EXPECT_EQ(ask.shown.size(), 1U);
  EXPECT_EQ(Files(), (Names{"1.jpg", "2.jpg", "4.jpg", "5.jpg"})) << "the others have their names back";
}

}  // namespace
}  // namespace ml::app
