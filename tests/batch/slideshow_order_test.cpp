#include "batch/slideshow_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace ml::batch {
namespace {

SlideshowState Show(std::vector<std::string> paths, int current = 0) {
  SlideshowState state;
  state.allImages = std::move(paths);
  BuildShown(state, {});
  state.current = current;
  return state;
}

unsigned NoDraw() {
  ADD_FAILURE() << "nothing is drawn in order";
  return 0;
}

constexpr int kNone = -1;

TEST(SlideshowOrder, GoesOnByTickStepWheelAndPlay) {
  struct Case {
    const char* name;
    int count, current;
    bool loop;
    int tick, next, previous, play;
  };
  const Case cases[] = {{"Middle", 3, 1, false, 2, 2, 0, 2},
                        {"LastWithLoop", 3, 2, true, 0, 0, 1, 0},
                        {"LastWithoutLoop", 3, 2, false, kNone, kNone, 1, 0},
                        {"FirstWithLoop", 3, 0, true, 1, 1, 2, 1},
                        {"FirstWithoutLoop", 3, 0, false, 1, 1, kNone, 1},
                        {"OnlyOneWithLoop", 1, 0, true, 0, kNone, kNone, kNone},
                        {"OnlyOneWithoutLoop", 1, 0, false, kNone, kNone, kNone, kNone},
                        {"Empty", 0, 0, true, kNone, kNone, kNone, kNone}};
  for (const auto& c : cases) {
    auto state = Show(std::vector<std::string>(static_cast<std::size_t>(c.count), "/a.jpg"), c.current);
    state.loop = c.loop;
    EXPECT_EQ(Upcoming(state, NoDraw).value_or(kNone), c.tick) << c.name;
    EXPECT_EQ(IndexAfter(state, 1).value_or(kNone), c.next) << c.name;
    EXPECT_EQ(IndexAfter(state, -1).value_or(kNone), c.previous) << c.name;
    EXPECT_EQ(PlayIndex(state).value_or(kNone), c.play) << c.name;
  }
}

TEST(SlideshowOrder, CountsTheWheelByNotchesAgainstItsSign) {
  struct Case {
    int current, delta;
    bool loop;
    int index;
  };
  const Case cases[] = {{1, -120, true, 2},   {1, 120, true, 0},      {1, 119, true, kNone}, {0, 120, true, 3},
                        {3, -240, true, 1},   {0, -480, true, kNone}, {0, 360, true, 1},     {0, 120, false, kNone},
                        {1, -4800, false, 3}, {3, -120, false, kNone}};
  for (const auto& c : cases) {
    auto state = Show({"/a", "/b", "/c", "/d"}, c.current);
    state.loop = c.loop;
    EXPECT_EQ(WheelIndex(state, c.delta).value_or(kNone), c.index) << c.current << " by " << c.delta;
  }
  EXPECT_EQ(WheelIndex({}, 120), std::nullopt);
}

TEST(SlideshowOrder, DrawsAheadFromAllOtherImages) {
  auto state = Show({"/a", "/b", "/c"}, 1);
  state.randomOrder = true;
  state.loop = false;  // has no say in random order
  const std::array<unsigned, 6> numbers = {4, 1, 5, 0, 2, 6};
  std::size_t drawn = 0;
  const auto draw = [&] { return numbers.at(drawn++); };
  EXPECT_EQ(Upcoming(state, draw), 2) << "4 and 1 are the current image";
  EXPECT_EQ(Upcoming(state, draw), 2) << "drawn once";
  EXPECT_EQ(drawn, 3U);
  MoveTo(state, 2);
  EXPECT_EQ(Upcoming(state, draw), 0);
  state.allImages.pop_back();
  BuildShown(state, {});  // the current one is gone, so what was drawn is the current one now
  EXPECT_EQ(state.current, 0);
  EXPECT_EQ(Upcoming(state, [] { return 3U; }), 1);

  auto alone = Show({"/a"});
  alone.randomOrder = true;
  EXPECT_EQ(Upcoming(alone, [] { return 7U; }), 0);
}

TEST(SlideshowOrder, DrawsEachOfTheOthersEquallyOften) {
  auto state = Show({"/a", "/b", "/c", "/d"}, 2);
  state.randomOrder = true;
  unsigned number = 0;
  std::array<int, 4> often{};
  for (int i = 0; i < 300; ++i) {
    ++often.at(static_cast<std::size_t>(*Upcoming(state, [&] { return number++; })));
    MoveTo(state, 2);
  }
  EXPECT_EQ(often, (std::array{100, 100, 0, 100}));
}

TEST(SlideshowOrder, KeepsTheCurrentImageWhenWhatIsShownChanges) {
  struct Case {
    const char* name;
    int current;
    TaggedPaths tagged;
    std::vector<std::string> shown;
    int index;
  };
  const Case cases[] = {{"StillThere", 2, {"/c", "/a"}, {"/a", "/c"}, 1},
                        {"Gone", 1, {"/c", "/a"}, {"/a", "/c"}, 0},
                        {"ByExactPath", 2, {"/a", "/C"}, {"/a"}, 0},
                        {"NoneTagged", 2, {}, {}, 0}};
  for (const auto& c : cases) {
    auto state = Show({"/a", "/b", "/c"}, c.current);
    state.taggedOnly = true;
    BuildShown(state, c.tagged);
    EXPECT_EQ(state.shown, c.shown) << c.name;
    EXPECT_EQ(state.current, c.index) << c.name;
    state.taggedOnly = false;
    BuildShown(state, c.tagged);
    EXPECT_EQ(state.shown, state.allImages) << c.name;
    EXPECT_EQ(state.current, c.shown.empty()                                      ? 0
                             : c.shown[static_cast<std::size_t>(c.index)] == "/a" ? 0
                                                                                  : 2)
        << c.name;
  }
}

TEST(SlideshowOrder, LetsAnUntaggedImageGoOutOfPlay) {
  struct Case {
    const char *name, *untagged;
    int current;
    bool changed;
    int index;
  };
  const Case cases[] = {{"Current", "/b", 1, true, 1},
                        {"CurrentAtTheEnd", "/c", 2, true, 0},
                        {"Before", "/a", 2, false, 1},
                        {"Behind", "/c", 0, false, 0}};
  for (const auto& c : cases) {
    auto state = Show({"/a", "/b", "/c"}, c.current);
    EXPECT_FALSE(TakeOutUntagged(state, c.untagged)) << "all are shown";
    EXPECT_EQ(state.Count(), 3);
    state.taggedOnly = true;
    EXPECT_EQ(TakeOutUntagged(state, c.untagged), c.changed) << c.name;
    EXPECT_EQ(state.Count(), 2) << c.name;
    EXPECT_EQ(state.current, c.index) << c.name;
  }
  auto last = Show({"/a"});
  last.taggedOnly = true;
  EXPECT_TRUE(TakeOutUntagged(last, "/a"));
  EXPECT_EQ(last.CurrentPath(), nullptr);
  EXPECT_EQ(Upcoming(last, NoDraw), std::nullopt);
}

TEST(SlideshowOrder, BeginsWithAtLeastASecond) {
  for (const auto& [stored, first] : {std::pair{-3, 1}, {0, 1}, {1, 1}, {4, 4}, {600, 600}}) {
    SlideshowState state;
    state.interval = stored;
    EXPECT_EQ(FirstInterval(state), first);
  }
}

}  // namespace
}  // namespace ml::batch
