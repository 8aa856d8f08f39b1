#include "imagefiles/look_ahead.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <random>
#include <stdexcept>

#include "metadata/byte_view.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using Paths = std::vector<std::string>;
constexpr std::size_t kPictureBytes = 10000;

/// A display whose pictures are made only as far as the test lets them.
class Bench {
 public:
  explicit Bench(int processors = 1, std::size_t maxBytes = LookAhead::kMaxBytes)
      : look_([this](const std::string& path, const DisplayOptions&) { return Make(path); },
              [this](std::uint64_t wish, const LookAhead::PicturePtr& picture) { Take(wish, picture); }, processors,
              maxBytes) {}
  ~Bench() { Allow(-1); }

  std::string File(const std::string& name, const std::string& content = "x") { return dir_.Write(name, content); }
  void Files(const Paths& names) {
    for (const auto& name : names) File(name);
  }
  LookAhead::Answer Want(const std::string& name, const Paths& neighbours = {}, DisplayOptions options = {}) {
    PictureWish wish{.path = dir_ / name, .neighbours = {}, .options = std::move(options)};
    for (const auto& neighbour : neighbours) wish.neighbours.push_back(dir_ / neighbour);
    return look_.Want(std::move(wish));
  }
  /// -1 lets everything pass.
  void Allow(int permits) {
    const std::lock_guard guard(lock_);
    permits_ = permits;
    changed_.notify_all();
  }
  void Hold() { Allow(0); }
  /// Names in the order in which their making began.
  Paths WaitUntilBegun(std::size_t count) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return begun_.size() >= count; });
    return begun_;
  }
  LookAhead::PicturePtr WaitUntilGiven(std::uint64_t wish) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return given_.contains(wish); });
    return given_[wish];
  }
  /// The next picture that is begun can only be this one's.
  void Settle() {
    look_.Pause();
    look_.Resume();
  }
  bool Given(std::uint64_t wish) {
    const std::lock_guard guard(lock_);
    return given_.contains(wish);
  }
  Paths Begun() {
    const std::lock_guard guard(lock_);
    return begun_;
  }
  LookAhead& Look() { return look_; }
  const test::TempDir& Dir() const { return dir_; }

 private:
  DisplayPicture Make(const std::string& path) {
    std::unique_lock guard(lock_);
    begun_.push_back(path.substr(path.rfind('/') + 1));
    changed_.notify_all();
    changed_.wait(guard, [this] { return permits_ != 0; });
    if (permits_ > 0) --permits_;
    if (path.find("throws") != std::string::npos) throw std::runtime_error("no memory");
    if (path.find("breaks") != std::string::npos) throw metadata::ExifException::OutOfBounds;
    DisplayPicture picture;
    const bool isBad = path.find("bad") != std::string::npos;
    if (isBad) picture.failure = "bad";
    if (!isBad) picture.main.data.resize(kPictureBytes - sizeof picture);
    return picture;
  }
  void Take(std::uint64_t wish, const LookAhead::PicturePtr& picture) {
    const std::lock_guard guard(lock_);
    EXPECT_FALSE(given_.contains(wish)) << "given twice";
    given_[wish] = picture;
    changed_.notify_all();
  }

  test::TempDir dir_;
  std::mutex lock_;
  std::condition_variable changed_;
  Paths begun_;
  std::map<std::uint64_t, LookAhead::PicturePtr> given_;
  int permits_ = -1;
  LookAhead look_;
};

TEST(LookAhead, MakesTheWantedPictureThenItsNeighboursInOrder) {
  Bench bench;
  bench.Files({"a", "b", "c"});
  const auto first = bench.Want("a", {"b", "c"});
  EXPECT_EQ(first.picture, nullptr);
  EXPECT_NE(bench.WaitUntilGiven(first.wish), nullptr);
  EXPECT_EQ(bench.WaitUntilBegun(3), (Paths{"a", "b", "c"}));
  bench.Settle();
  const auto second = bench.Want("b", {"c", "a"});
  EXPECT_NE(second.picture, nullptr);
  EXPECT_GT(second.wish, first.wish);
  bench.Settle();
  EXPECT_EQ(bench.Begun().size(), 3U);
  EXPECT_FALSE(bench.Given(second.wish)) << "it was answered at once";
}

TEST(LookAhead, NeighboursWaitForAnUnexpectedPictureUnlessWishesHurry) {
  Bench bench(2);
  bench.Files({"a", "b", "c", "d"});
  bench.Hold();
  bench.Want("a", {"b"});
  bench.WaitUntilBegun(1);
  bench.Want("c", {"d"});
  bench.WaitUntilBegun(2);
  EXPECT_EQ(bench.Begun(), (Paths{"a", "c"})) << "b was dropped";
  bench.Allow(1);  // one of the two ends, and the next wish is in a hurry as the other has not come
  EXPECT_EQ(bench.WaitUntilBegun(3).back(), "d");
}

TEST(LookAhead, OnlyAWishForTheNeighbourInProgressWaitsForIt) {
  Bench bench;
  bench.Files({"a", "b", "z"});
  bench.Hold();
  const auto first = bench.Want("a", {"b"});
  bench.WaitUntilBegun(1);
  bench.Allow(1);
  bench.WaitUntilBegun(2);  // the neighbour keeps the only processor
  bench.Want("z");
  EXPECT_EQ(bench.WaitUntilBegun(3).back(), "z");
  const auto second = bench.Want("b");
  EXPECT_EQ(second.picture, nullptr);
  bench.Allow(-1);
  bench.WaitUntilGiven(second.wish);
  EXPECT_TRUE(bench.Given(first.wish));
  EXPECT_EQ(bench.Begun().size(), 3U);
}

TEST(LookAhead, WhatWasWantedAMomentAgoIsNotMadeTwice) {
  Bench bench;
  bench.Files({"a", "b"});
  bench.Hold();
  bench.Want("a");
  bench.WaitUntilBegun(1);
  const auto second = bench.Want("b");
  bench.WaitUntilBegun(2);
  bench.Allow(-1);
  bench.WaitUntilGiven(second.wish);
  const auto third = bench.Want("a");
  // Kept if it ended first, else still in progress.
  if (!third.picture) bench.WaitUntilGiven(third.wish);
  EXPECT_EQ(bench.Begun().size(), 2U);
}

TEST(LookAhead, AKeptPictureIsMadeAgainWhenItNoLongerHolds) {
  struct Case {
    const char* what;
    void (*change)(Bench&);
    DisplayOptions options;
    bool madeAgain;
  };
  DisplayOptions other;
  other.quality.highQuality = true;
  const Case cases[] = {
      {"nothing", [](Bench&) {}, {}, false},
      {"another size of the file", [](Bench& bench) { bench.File("a", "longer"); }, {}, true},
      {"the file is gone", [](Bench& bench) { ::unlink((bench.Dir() / "a").c_str()); }, {}, true},
      {"other options", [](Bench&) {}, other, true},
      {"forgotten", [](Bench& bench) { bench.Look().Forget(bench.Dir() / "a"); }, {}, true},
      {"another forgotten", [](Bench& bench) { bench.Look().Forget(bench.Dir() / "b"); }, {}, false},
      {"all forgotten", [](Bench& bench) { bench.Look().ForgetAll(); }, {}, true},
  };
  for (const auto& c : cases) {
    Bench bench;
    bench.File("a");
    bench.WaitUntilGiven(bench.Want("a").wish);
    bench.Settle();
    c.change(bench);
    const auto again = bench.Want("a", {}, c.options);
    EXPECT_EQ(again.picture == nullptr, c.madeAgain) << c.what;
    if (!again.picture) bench.WaitUntilGiven(again.wish);
    EXPECT_EQ(bench.Begun().size(), c.madeAgain ? 2U : 1U) << c.what;
  }
}

TEST(LookAhead, APictureTakenFromACompanionIsMadeAgainWhenThatChanges) {
  struct Case {
    const char *name, *companion;
    bool madeAgain;
  };
  for (const auto& c : {Case{"a.tif", "a.JPG", true}, Case{"a.crw", "a.thm", true}, Case{"a.jpg", "a.thm", false}}) {
    Bench bench;
    bench.Files({c.name, c.companion});
    bench.WaitUntilGiven(bench.Want(c.name).wish);
    bench.Settle();
    bench.File(c.companion, "longer");
    EXPECT_EQ(bench.Want(c.name).picture == nullptr, c.madeAgain) << c.name;
  }
}

TEST(LookAhead, FailuresAreGivenButNotKept) {
  Bench bench;
  bench.Files({"bad", "throws", "breaks"});
  EXPECT_EQ(bench.WaitUntilGiven(bench.Want("bad").wish)->failure, "bad");
  bench.Settle();
  EXPECT_EQ(bench.Want("bad").picture, nullptr);
  const auto failure = bench.WaitUntilGiven(bench.Want("throws").wish)->failure;
  EXPECT_NE(failure.find("no memory"), std::string::npos) << failure;
  EXPECT_NE(bench.WaitUntilGiven(bench.Want("breaks").wish)->failure, "");
  EXPECT_EQ(bench.Look().KeptBytes(), 0U);
}

TEST(LookAhead, AFileThatChangesWhileItIsReadIsNotKept) {
  Bench bench;
  bench.File("a");
  bench.Hold();
  const auto first = bench.Want("a");
  bench.WaitUntilBegun(1);
  bench.File("a", "rewritten");
  bench.Allow(-1);
  bench.WaitUntilGiven(first.wish);
  bench.Settle();
  EXPECT_EQ(bench.Want("a").picture, nullptr);
}

TEST(LookAhead, WhatIsForgottenInProgressIsMadeAgainForTheSameWish) {
  Bench bench;
  bench.File("a");
  bench.Hold();
  const auto wish = bench.Want("a").wish;
  bench.WaitUntilBegun(1);
  bench.Look().Forget(bench.Dir() / "a");
  bench.Allow(-1);
  bench.WaitUntilGiven(wish);
  EXPECT_EQ(bench.Begun().size(), 2U);
}

TEST(LookAhead, KeepsToItsBytesAndLetsGoOfWhatIsLeastWanted) {
  Bench bench(1, 3 * kPictureBytes);
  bench.Files({"a", "b", "c", "d", "e"});
  bench.Want("a", {"b", "c", "d", "e"});
  bench.WaitUntilBegun(5);
  bench.Settle();
  EXPECT_EQ(bench.Look().KeptBytes(), 3 * kPictureBytes);
  EXPECT_NE(bench.Want("c").picture, nullptr) << "the first three of the plan stay";
  EXPECT_NE(bench.Want("a").picture, nullptr);
  bench.WaitUntilGiven(bench.Want("e").wish);
  bench.Settle();
  EXPECT_NE(bench.Want("a").picture, nullptr);
  EXPECT_EQ(bench.Want("b").picture, nullptr) << "longest unused";
}

TEST(LookAhead, APictureLargerThanAllItsBytesIsGivenOnce) {
  Bench bench(1, kPictureBytes / 2);
  bench.Files({"a", "b"});
  bench.WaitUntilGiven(bench.Want("a", {"b"}).wish);
  bench.WaitUntilBegun(2);
  bench.Settle();
  EXPECT_EQ(bench.Begun().size(), 2U);
  EXPECT_EQ(bench.Look().KeptBytes(), 0U);
}

TEST(LookAhead, NothingIsInProgressDuringAPause) {
  Bench bench(2);
  bench.Files({"a", "b", "c"});
  bench.Hold();
  const auto first = bench.Want("a", {"b"});
  bench.WaitUntilBegun(1);
  std::jthread release([&] { bench.Allow(-1); });
  bench.Look().Pause();
  EXPECT_TRUE(bench.Given(first.wish));
  const auto begun = bench.Begun().size();
  const auto second = bench.Want("c");
  EXPECT_EQ(bench.Begun().size(), begun);
  EXPECT_FALSE(bench.Given(second.wish));
  bench.Look().Resume();
  bench.WaitUntilGiven(second.wish);
}

TEST(LookAhead, NothingIsGivenWhenNothingIsWanted) {
  Bench bench;
  bench.Files({"a", "b"});
  bench.Hold();
  const auto wish = bench.Want("a", {"b"}).wish;
  bench.WaitUntilBegun(1);
  bench.Look().WantNothing();
  bench.Allow(-1);
  bench.Settle();
  EXPECT_FALSE(bench.Given(wish));
  EXPECT_EQ(bench.Begun(), Paths{"a"});
  EXPECT_NE(bench.Want("a").picture, nullptr) << "what was made stays";
}

/// Everything at once, with files that come and go; whatever is wanted last comes.
TEST(LookAhead, SurvivesAnything) {
  Bench bench(2, 4 * kPictureBytes);
  constexpr int kFiles = 8, kSteps = 3000;
  std::mt19937 random(7);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  const auto name = [&] { return std::to_string(below(kFiles)); };
  for (int i = 0; i < kFiles; ++i) bench.File(std::to_string(i));
  for (int i = 0; i < kSteps; ++i) {
    switch (below(12)) {
      case 0:
        bench.File(name(), std::string(static_cast<std::size_t>(below(50)), 'x'));
        break;
      case 1:
        ::unlink((bench.Dir() / name()).c_str());
        break;
      case 2:
        bench.Look().Pause();
        break;
      case 3:
        bench.Look().Forget(bench.Dir() / name());
        break;
      case 4:
        below(20) == 0 ? bench.Look().ForgetAll() : bench.Look().WantNothing();
        break;
      case 5:
      case 6:
        bench.Look().Resume();
        break;
      default: {
        DisplayOptions options;
        options.quality.greyscale = below(10) == 0;
        bench.Want(name(), {name(), name(), name()}, options);
      }
    }
    ASSERT_LE(bench.Look().KeptBytes(), 4 * kPictureBytes);
  }
  const auto last = bench.Want(name());
  bench.Look().Resume();
  if (last.picture) return;
  EXPECT_NE(bench.WaitUntilGiven(last.wish), nullptr);
}

}  // namespace
}  // namespace ml::imagefiles
