#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <optional>

#include "catalogue/ui/directory_drop.h"
#include "catalogue/ui/directory_model.h"
#include "catalogue/ui/directory_tree.h"
#include "catalogue/ui/subdirectories.h"
#include "support/temp_dir.h"

namespace ml {
namespace {

using catalogue::ui::DirectoryTree;
using catalogue::ui::ListSubdirectories;
using catalogue::ui::Subdirectory;
using Names = std::vector<std::string>;

void MakeDirectory(const std::string& path) { ASSERT_EQ(mkdir(path.c_str(), 0755), 0) << path; }

TEST(Subdirectories, AreSortedAndSayWhatCanBeExpanded) {
  const test::TempDir dir;
  for (const char* name : {"b", "A", "b/inner", ".hidden", "caf\xe9"}) MakeDirectory(dir / name);
  dir.Write("file.jpg", "");
  dir.Write("b/file.jpg", "");
  ASSERT_EQ(symlink("b", (dir / "link").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", (dir / "dangling").c_str()), 0);
  EXPECT_EQ(ListSubdirectories(dir.Path(), false, {}),
            (std::vector<Subdirectory>{{"A", false}, {"b", true}, {"caf\xe9", false}, {"link", true}}));
  EXPECT_EQ(ListSubdirectories(dir.Path(), true, {}).front(), (Subdirectory{".hidden", false}));
  EXPECT_TRUE(ListSubdirectories(dir / "missing", false, {}).empty());
}

struct Tree {
  DirectoryTree view;
  std::vector<std::string> chosen;

  Tree() {
    QObject::connect(&view, &DirectoryTree::directoryChosen, [this](const auto& path) { chosen.push_back(path); });
    view.resize(300, 400);
    view.show();
  }
  bool WaitAt(const std::string& path) {
    return QTest::qWaitFor([&] { return view.Directory() == path; });
  }
  /// Names on screen below the current row.
  Names Children() const {
    Names names;
    const auto at = view.currentIndex();
    for (int row = 0; row < view.model()->rowCount(at); ++row) {
      names.push_back(view.model()->index(row, 0, at).data().toString().toStdString());
    }
    return names;
  }
};

TEST(DirectoryTreeView, GoesToADirectoryWhoseNameIsNoUtf8AndTellsNobody) {
  const test::TempDir dir;
  const auto target = dir / "caf\xe9/inner";
  MakeDirectory(dir / "caf\xe9");
  MakeDirectory(target);
  Tree tree;
  tree.view.SetDirectory(target);
  ASSERT_TRUE(tree.WaitAt(target));
  EXPECT_EQ(tree.view.currentIndex().parent().data().toString(), QStringLiteral("caf\u00e9"));
  EXPECT_TRUE(tree.view.isExpanded(tree.view.currentIndex().parent()));
  QTest::qWait(50);
  EXPECT_TRUE(tree.chosen.empty());

  QTest::keyClick(&tree.view, Qt::Key_Up);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !tree.chosen.empty(); }));
  EXPECT_EQ(tree.chosen, Names{dir / "caf\xe9"});
}

TEST(DirectoryTreeView, RefreshFollowsTheDiskAndKeepsThePlace) {
  const test::TempDir dir;
  for (const char* name : {"a", "c", "e"}) MakeDirectory(dir / name);
  Tree tree;
  tree.view.SetDirectory(dir.Path());
  ASSERT_TRUE(tree.WaitAt(dir.Path()));
  tree.view.expand(tree.view.currentIndex());
  ASSERT_TRUE(QTest::qWaitFor([&] { return tree.Children() == Names{"a", "c", "e"}; }));
  for (const char* name : {"b", "f"}) MakeDirectory(dir / name);
  ASSERT_EQ(rmdir((dir / "c").c_str()), 0);
  tree.view.Refresh();
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree.Children() == Names{"a", "b", "e", "f"}; }));
  EXPECT_EQ(tree.view.Directory(), dir.Path());
}

TEST(DirectoryTreeView, RefreshKeepsTheCurrentRowInSight) {
  const test::TempDir dir;
  MakeDirectory(dir / "z");
  Tree tree;
  tree.view.SetDirectory(dir / "z");
  ASSERT_TRUE(tree.WaitAt(dir / "z"));
  for (int i = 0; i < 40; ++i) MakeDirectory(dir / ("a" + std::to_string(i)));
  tree.view.Refresh();
  const auto siblings = [&] { return tree.view.model()->rowCount(tree.view.currentIndex().parent()); };
  ASSERT_TRUE(QTest::qWaitFor([&] { return siblings() == 41; }));
  EXPECT_TRUE(tree.view.viewport()->rect().contains(tree.view.visualRect(tree.view.currentIndex()).center()));
}

struct Depth {
  int levels;
  bool scrollsSideways;
};
class DirectoryTreeDepth : public testing::TestWithParam<Depth> {};
TEST_P(DirectoryTreeDepth, CurrentRowIsWhollyInSight) {
  const test::TempDir dir;
  for (int i = 0; i < 40; ++i) MakeDirectory(dir / ("a directory with a very long name " + std::to_string(i)));
  std::string target = dir.Path();
  for (int level = 0; level < GetParam().levels; ++level) MakeDirectory(target += "/z");
  Tree tree;
  tree.view.resize(200, 400);
  tree.view.SetDirectory(target);
  ASSERT_TRUE(tree.WaitAt(target));
  for (const int height : {400, 150}) {
    tree.view.resize(200, height);
    QTest::qWait(50);
    EXPECT_EQ(tree.view.horizontalScrollBar()->isVisible(), GetParam().scrollsSideways);
    const auto row = tree.view.visualRect(tree.view.currentIndex());
    const auto pane = tree.view.viewport()->rect();
    EXPECT_TRUE(row.top() >= 0 && row.bottom() <= pane.bottom()) << height;
    EXPECT_GT(row.intersected(pane).width(), 60) << height;
  }
}
INSTANTIATE_TEST_SUITE_P(All, DirectoryTreeDepth, testing::Values(Depth{1, false}, Depth{12, true}),
                         [](const auto& c) { return "Levels" + std::to_string(c.param.levels); });

TEST(DirectoryTreeView, GoneDirectoryDoesNotChooseItsNeighbour) {
  const test::TempDir dir;
  for (const char* name : {"a", "b"}) MakeDirectory(dir / name);
  Tree tree;
  tree.view.SetDirectory(dir / "a");
  ASSERT_TRUE(tree.WaitAt(dir / "a"));
  ASSERT_EQ(rmdir((dir / "a").c_str()), 0);
  tree.view.Refresh();
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree.view.Directory().empty(); })) << tree.view.Directory();
  tree.view.SetDirectory(dir / "b");
  ASSERT_TRUE(tree.WaitAt(dir / "b"));
  QTest::qWait(50);
  EXPECT_TRUE(tree.chosen.empty());
}

TEST(DirectoryTreeView, TakesFilesAsTheKeysWantIt) {
  using catalogue::TransferKind;
  const test::TempDir dir;
  MakeDirectory(dir / "caf\xe9");
  Tree tree;
  tree.view.SetDirectory(dir / "caf\xe9");
  ASSERT_TRUE(tree.WaitAt(dir / "caf\xe9"));
  std::vector<catalogue::ui::DroppedFiles> taken;
  QObject::connect(&tree.view, &DirectoryTree::filesDropped, [&](const auto& files) { taken.push_back(files); });
  QMimeData data;
  data.setData(QStringLiteral("text/uri-list"), "file:///card/a%20%E9.crw\r\nhttp://elsewhere/b.jpg\r\n");
  const auto drop = [&](const QPoint& at, Qt::KeyboardModifiers keys) {
    const auto actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(at, actions, &data, Qt::LeftButton, keys);
    QApplication::sendEvent(tree.view.viewport(), &enter);
    QDropEvent event(at, actions, &data, Qt::LeftButton, keys);
    event.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(tree.view.viewport(), &event);
    EXPECT_EQ(event.isAccepted(), enter.isAccepted());
    EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction) << "the source must not delete them";
    QTest::qWait(10);
    return event.isAccepted();
  };
  const QPoint row = tree.view.visualRect(tree.view.currentIndex()).center();
  for (const auto keys : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) EXPECT_TRUE(drop(row, keys));
  ASSERT_EQ(taken.size(), 3U);
  EXPECT_EQ(taken[0].paths, Names{"/card/a \xe9.crw"});
  EXPECT_EQ(taken[0].directory, dir / "caf\xe9");
  EXPECT_EQ(taken[0].kind, std::nullopt);
  EXPECT_EQ(taken[1].kind, TransferKind::Copy);
  EXPECT_EQ(taken[2].kind, TransferKind::Move);
  tree.view.resize(300, 4000);
  QTest::qWait(20);
  EXPECT_FALSE(drop({20, 3990}, Qt::NoModifier)) << "below the last row";
  EXPECT_EQ(taken.size(), 3U);
  QTest::qWait(50);
  EXPECT_TRUE(tree.chosen.empty());
}

TEST(DirectoryTreeView, SelectedOnlyDirectoryIsChosenByAClick) {
  const test::TempDir dir;
  for (const char* name : {"a", "b"}) MakeDirectory(dir / name);
  Tree tree;
  tree.view.SetDirectory(dir / "a");
  ASSERT_TRUE(tree.WaitAt(dir / "a"));
  tree.view.Select(dir / "b");
  ASSERT_TRUE(tree.WaitAt(dir / "b"));
  const auto click = [&] {
    QTest::mouseClick(tree.view.viewport(), Qt::LeftButton, {},
                      tree.view.visualRect(tree.view.currentIndex()).center());
    QTest::qWait(50);
  };
  click();
  EXPECT_EQ(tree.chosen, Names{dir / "b"});
  click();
  EXPECT_EQ(tree.chosen.size(), 1U) << "it is on show";
}

TEST(DirectoryTreeView, VolumesComeAndGoAndTheOthersStayOpen) {
  const test::TempDir dir;
  for (const char* name : {"home", "home/in", "card", "disk"}) MakeDirectory(dir / name);
  catalogue::ui::DirectoryModel model(nullptr);
  QTreeView view;
  view.setModel(&model);
  const auto set = [&](const Names& names) {
    std::vector<catalogue::ui::DirectoryRoot> roots;
    for (const auto& name : names) roots.push_back({dir / name, name, "drive"});
    model.SetRoots(roots);
    Names shown;
    for (int row = 0; row < model.rowCount(); ++row) shown.push_back(model.RootAt(row).data().toString().toStdString());
    EXPECT_EQ(shown, names);
  };
  set({"home", "disk"});
  model.Read(model.RootAt(0));
  ASSERT_TRUE(QTest::qWaitFor([&] { return model.rowCount(model.RootAt(0)) == 1; }));
  view.expand(model.RootAt(0));
  set({"home", "card", "disk"});
  set({"home", "card"});
  set({"home", "disk"});
  EXPECT_TRUE(view.isExpanded(model.RootAt(0)));
  EXPECT_EQ(model.rowCount(model.RootAt(0)), 1);
}

TEST(DirectoryTreeView, PlacesOfOtherFileSystemsCountAsRoots) {
  const test::TempDir dir;
  Tree tree;
  for (const auto& [path, isRoot] : {std::pair(std::string("/"), true), {"/proc", true}, {dir.Path(), false}}) {
    tree.view.SetDirectory(path);
    ASSERT_TRUE(tree.WaitAt(path));
    EXPECT_EQ(tree.view.IsAtRoot(), isRoot) << path;
  }
}

TEST(DirectoryTreeView, FocusAloneChoosesNothing) {
  Tree tree;
  tree.view.activateWindow();
  tree.view.setFocus(Qt::TabFocusReason);
  QTest::qWait(50);
  EXPECT_TRUE(tree.chosen.empty());
}

TEST(DirectoryTreeView, HiddenDirectoriesAreAnOption) {
  const test::TempDir dir;
  for (const char* name : {".dark", "light"}) MakeDirectory(dir / name);
  Tree tree;
  tree.view.SetDirectory(dir.Path());
  ASSERT_TRUE(tree.WaitAt(dir.Path()));
  tree.view.expand(tree.view.currentIndex());
  ASSERT_TRUE(QTest::qWaitFor([&] { return tree.Children() == Names{"light"}; }));
  tree.view.SetShowHidden(true);
  ASSERT_TRUE(tree.WaitAt(dir.Path()));
  tree.view.expand(tree.view.currentIndex());
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree.Children() == Names{".dark", "light"}; }));
  EXPECT_TRUE(tree.chosen.empty());
}

}  // namespace
}  // namespace ml
