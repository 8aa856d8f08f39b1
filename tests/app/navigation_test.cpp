#include "app/navigation.h"

#include <gtest/gtest.h>

#include "app/recent_directories.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

TEST(RecentDirectories, NewestFirstAndEachOnce) {
  const test::TempDir dir;
  dir.Write("a/x", "");
  dir.Write("b/x", "");
  settings::RecentDirectories recent;
  for (int i = 0; i < 9; ++i) AddRecentDirectory(recent, "/nowhere/" + std::to_string(i));
  AddRecentDirectory(recent, dir / "a");
  AddRecentDirectory(recent, dir / "b/");
  AddRecentDirectory(recent, dir / "a/");
  ASSERT_EQ(recent.size(), 8U);
  EXPECT_EQ(recent[0], dir / "a");
  EXPECT_EQ(recent[1], dir / "b");
  EXPECT_EQ(recent[2], "/nowhere/8");
  EXPECT_EQ(recent[7], "/nowhere/3");
  EXPECT_EQ(RecentDirectoryText(0, "/a&b"), "&1 /a&&b");
}

TEST(Navigation, StopsOrGoesAround) {
  EXPECT_EQ(StepIndex(5, WheelStep(1, true), 100, false), 0);
  EXPECT_EQ(StepIndex(5, WheelStep(1, true), 100, true), 85);
  EXPECT_EQ(StepIndex(98, WheelStep(-3, false), 100, false), 99);
  EXPECT_EQ(StepIndex(98, WheelStep(-3, false), 100, true), 1);
  EXPECT_EQ(StepIndex(0, -1, 3, true), 2);
  EXPECT_EQ(StepIndex(-1, 1, 0, true), -1);
}

TEST(Navigation, NeighboursLieInTheDirectionOfTravel) {
  using Indices = std::vector<int>;
  EXPECT_EQ(DirectionOf(3, 4, 10), 1);
  EXPECT_EQ(DirectionOf(4, 3, 10), -1);
  EXPECT_EQ(DirectionOf(9, 0, 10), 1);
  EXPECT_EQ(DirectionOf(0, 9, 10), -1);
  EXPECT_EQ(DirectionOf(1, 0, 2), -1);
  EXPECT_EQ(Neighbours(4, 1, 10, false), (Indices{5, 6, 7, 3}));
  EXPECT_EQ(Neighbours(4, -1, 10, false), (Indices{3, 2, 1, 5}));
  EXPECT_EQ(Neighbours(8, 1, 10, false), (Indices{9, 7}));
  EXPECT_EQ(Neighbours(8, 1, 10, true), (Indices{9, 0, 1, 7}));
  EXPECT_EQ(Neighbours(0, 1, 2, true), Indices{1});
  EXPECT_EQ(Neighbours(0, 1, 1, true), Indices{});
}

}  // namespace
}  // namespace ml::app
