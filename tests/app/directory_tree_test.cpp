#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <optional>

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
