#include "catalogue/image_list.h"

#include <gtest/gtest.h>

namespace {

using namespace ml::catalogue;
using Names = std::vector<std::string>;

ImageList Make(Names names) {
  ImageList list;
  list.Assign(std::move(names));
  return list;
}

TEST(ImageList, FindsExactlyFirstAndFoldedOtherwise) {
  const auto list = Make({"/d/A.jpg", "/d/a.jpg", "/d/\xC3\x84.jpg"});
  EXPECT_EQ(list.IndexOfPath("/d/a.jpg"), 1);
  EXPECT_EQ(list.IndexOfPath("/d/a.JPG"), -1);
  EXPECT_EQ(list.FindPath("/d/a.jpg"), 1);
  EXPECT_EQ(list.FindPath("/d/a.JPG"), 0);
  EXPECT_EQ(list.FindPath("/D/\xC3\xA4.jpg"), 2);
  EXPECT_EQ(list.FindPath("/d/b.jpg"), -1);
}

TEST(ImageList, TagsByPathTheFirstMatchOnly) {
  auto list = Make({"/d/A.jpg", "/d/a.jpg"});
  list.SetTagByPath("/d/A.JPG", true);
  list.SetTagByPath("/d/none.jpg", true);
  EXPECT_EQ(list.TaggedPaths(), Names{"/d/A.jpg"});
  list.ToggleTag(1);
  list.ToggleTag(0);
  list.ToggleTag(2);
  EXPECT_EQ(list.TaggedPaths(), Names{"/d/a.jpg"});
}

TEST(ImageList, SelectionAndTagsActOnEachOther) {
  auto list = Make({"a", "b", "c"});
  EXPECT_EQ(SelectionText(list), "");
  list.SelectOnly(1);
  EXPECT_EQ(SelectionText(list), "1 of 3 selected");
  list.TagSelected();
  list.InvertSelection();
  EXPECT_EQ(list.SelectedIndices(), (std::vector<int>{0, 2}));
  list.SelectTagged();
  EXPECT_EQ(list.SelectedPaths(), Names{"b"});
  list.SelectAll();
  list.UntagSelected();
  EXPECT_EQ(list.TaggedCount(), 0);
  list.SelectNone();
  EXPECT_EQ(list.SelectedCount(), 0);
}

TEST(ImageList, ReorderUsesEachEntryOnceAndKeepsTheRestBehind) {
  auto list = Make({"a", "b", "c", "d", "B"});
  list.SetTag(2, true);
  list.SelectOnly(0);
  list.currentIndex = 3;
  list.focusIndex = 1;
  const auto order = list.Reorder({"c", "gone", "B", "C", "b", "b", "d"});
  EXPECT_EQ(list.files, (Names{"c", "B", "b", "d", "a"}));
  EXPECT_EQ(order, (std::vector<int>{2, 4, 1, 3, 0}));
  EXPECT_EQ(list.TaggedPaths(), Names{"c"});
  EXPECT_EQ(list.SelectedPaths(), Names{"a"});
  EXPECT_EQ(list.currentIndex, 3);
  EXPECT_EQ(list.focusIndex, 2);
}

TEST(ImageList, RemoveKeepsCurrentAndFocusOnTheirEntryOrTheNext) {
  struct Case {
    int index;
    std::vector<int> removed;
    int expected;
  };
  const Case cases[] = {{2, {0, 1}, 0},    {2, {2}, 2},           {3, {3}, 2},
                        {1, {1, 2, 3}, 0}, {0, {0, 1, 2, 3}, -1}, {-1, {0}, -1}};
  for (const auto& c : cases) {
    auto list = Make({"a", "b", "c", "d"});
    list.SetTag(3, true);
    list.currentIndex = list.focusIndex = c.index;
    list.Remove(c.removed);
    EXPECT_EQ(list.currentIndex, c.expected);
    EXPECT_EQ(list.focusIndex, c.expected);
    EXPECT_EQ(list.files.size(), 4 - c.removed.size());
    EXPECT_EQ(list.marks.size(), list.files.size());
  }
}

}  // namespace
