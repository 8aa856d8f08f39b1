#include "catalogue/thumbnail_thread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ml::catalogue {
namespace {

/// A maker that the test can hold back, and that remembers what it was asked for.
class Maker {
 public:
  ImageItem operator()(const std::string& path, int size) {
    ++running_;
    std::unique_lock guard(lock_);
    asked_.push_back(path);
    changed_.notify_all();
    changed_.wait(guard, [this] { return permits_ != 0; });
    if (permits_ > 0) --permits_;
    --running_;
    ImageItem item;
    item.path = path;
    if (path.find("bad") == std::string::npos) {
      item.pixels = imaging::MakePixelBuffer(size, size, imaging::PixelOrder::Bgr);
    }
    return item;
  }
  /// -1 lets everything pass.
  void Allow(int permits) {
    const std::lock_guard guard(lock_);
    permits_ = permits;
    changed_.notify_all();
  }
  void WaitUntilAsked(std::size_t count) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return asked_.size() >= count; });
  }
  std::vector<std::string> Asked() {
    const std::lock_guard guard(lock_);
    return asked_;
  }
  void Forget() {
    const std::lock_guard guard(lock_);
    asked_.clear();
  }
  int Running() const { return running_; }

 private:
  std::mutex lock_;
  std::condition_variable changed_;
  std::vector<std::string> asked_;
  int permits_ = -1;
  std::atomic<int> running_{0};
};

class Worker : public testing::Test {
 protected:
  explicit Worker(int threads = 1)
      : thread_(
            list_, [this](const std::string& path, int size) { return maker_(path, size); },
            [this](int) { ++ready_, ready_.notify_all(); }, threads) {}

  static std::vector<std::string> Names(std::initializer_list<const char*> names) {
    return {names.begin(), names.end()};
  }
  void WaitUntilFinished(int count) {
    while (thread_.FinishedCount() < count) std::this_thread::yield();
  }

  ImageList list_;
  Maker maker_;
  std::atomic<int> ready_{0};
  CThumbnailThread thread_;
};

class WorkerOnTwoThreads : public Worker {
 protected:
  WorkerOnTwoThreads() : Worker(2) {}
};

TEST_F(Worker, MakesEveryThumbnailAndMarksFailures) {
  thread_.LoadList(Names({"a", "bad", "c"}));
  WaitUntilFinished(3);
  EXPECT_EQ(thread_.State(0), ThumbnailState::Done);
  EXPECT_EQ(thread_.State(1), ThumbnailState::Failed);
  EXPECT_EQ(thread_.Item(2)->path, "c");
  EXPECT_EQ(thread_.Item(2)->pixels.width, 80);
  EXPECT_EQ(thread_.Item(3), nullptr);
  thread_.Pause();
  EXPECT_EQ(ready_, 3);
}

TEST_F(Worker, GoesOnFromTheJumpAndThenFromTheTop) {
  for (const auto& [index, made] :
       {std::pair(3, Names({"a", "d", "e", "b", "c"})), std::pair(99, Names({"a", "b", "c", "d", "e"}))}) {
    maker_.Forget();
    maker_.Allow(0);
    thread_.LoadList(Names({"a", "b", "c", "d", "e"}));
    maker_.WaitUntilAsked(1);
    thread_.JumpTo(index);
    maker_.Allow(-1);
    WaitUntilFinished(5);
    EXPECT_EQ(maker_.Asked(), made) << index;
  }
}

TEST_F(WorkerOnTwoThreads, PauseWaitsForThumbnailsInProgressAndLetsNoneStart) {
  maker_.Allow(0);
  thread_.LoadList(Names({"a", "b", "c", "d", "e", "f"}));
  maker_.WaitUntilAsked(2);  // both threads are inside
  std::jthread release([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    maker_.Allow(2);
  });
  thread_.Pause();
  EXPECT_EQ(maker_.Running(), 0);
  EXPECT_EQ(maker_.Asked().size(), 2U);
  maker_.Allow(-1);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(maker_.Asked().size(), 2U);
  thread_.Resume();
  WaitUntilFinished(6);
}

TEST_F(Worker, GivingWayFinishesWhatWasBegunAndBeginsNothing) {
  maker_.Allow(1);
  thread_.LoadList(Names({"a", "b", "c"}));
  thread_.Resume();
  maker_.WaitUntilAsked(2);
  thread_.GiveWay();
  maker_.Allow(-1);
  WaitUntilFinished(2);
  thread_.Pause();
  thread_.Resume();  // does not end it
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(Names({"a", "b"}), maker_.Asked());
  thread_.GoOn();
  WaitUntilFinished(3);
}

TEST_F(Worker, PausesDoNotNest) {
  thread_.Pause();
  thread_.Pause();
  thread_.LoadList(Names({"a"}));  // gated: resumes
  WaitUntilFinished(1);
}

TEST_F(Worker, ReorderCarriesThumbnailsAndRetriesFailures) {
  thread_.LoadList(Names({"a", "bad", "c"}));
  WaitUntilFinished(3);
  list_.SetTag(0, true);
  maker_.Forget();
  thread_.Reorder(Names({"c", "c", "bad"}));
  EXPECT_EQ(list_.files, Names({"c", "bad", "a"}));
  EXPECT_TRUE(list_.marks[2].tagged);
  WaitUntilFinished(3);
  EXPECT_EQ(maker_.Asked(), Names({"bad"}));
  EXPECT_EQ(thread_.Item(0)->path, "c");
  EXPECT_EQ(thread_.Item(2)->path, "a");
  thread_.Reorder({});
  EXPECT_EQ(list_.files, Names({"c", "bad", "a"}));
}

TEST_F(Worker, MovesTheSelectedEntriesAsABlock) {
  struct Case {
    std::vector<int> selected;
    int position;
    std::vector<std::string> expected;
  };
  for (const auto& c :
       {Case{{0, 3}, 2, Names({"b", "a", "d", "c", "e"})}, Case{{4}, 0, Names({"e", "a", "b", "c", "d"})},
        Case{{0, 1}, 5, Names({"c", "d", "e", "a", "b"})}, Case{{2}, 2, Names({"a", "b", "c", "d", "e"})}}) {
    thread_.LoadList(Names({"a", "b", "c", "d", "e"}));
    for (const int index : c.selected) list_.marks[static_cast<std::size_t>(index)].selected = true;
    thread_.MoveSelectedTo(c.position);
    EXPECT_EQ(list_.files, c.expected);
    EXPECT_EQ(list_.SelectedCount(), static_cast<int>(c.selected.size()));
  }
}

TEST_F(Worker, ANewSizeMakesAllAgainAndTheSameSizeNone) {
  thread_.LoadList(Names({"a", "b"}));
  WaitUntilFinished(2);
  maker_.Forget();
  thread_.SetThumbnailSize(80);
  EXPECT_EQ(thread_.FinishedCount(), 2);
  thread_.SetThumbnailSize(160);
  WaitUntilFinished(2);
  EXPECT_EQ(maker_.Asked().size(), 2U);
  EXPECT_EQ(thread_.Item(1)->pixels.width, 160);
}

TEST_F(WorkerOnTwoThreads, ANewMakerMakesAllAgainAndTheOldOneNoMore) {
  thread_.SetThumbnailSize(8);
  maker_.Allow(0);
  thread_.LoadList(Names({"/d/a", "/d/b", "/d/bad"}));
  maker_.WaitUntilAsked(2);  // both threads are inside
  std::jthread release([this] { maker_.Allow(-1); });
  thread_.SetMaker([](const std::string& path, int size) {
    ImageItem item;
    item.path = path;
    item.pixels = imaging::MakePixelBuffer(size, 1);
    return item;
  });
  maker_.Forget();
  WaitUntilFinished(3);
  EXPECT_TRUE(maker_.Asked().empty());
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(thread_.State(i), ThumbnailState::Done);
    EXPECT_EQ(thread_.Item(i)->pixels.height, 1);
  }
}

TEST_F(Worker, RemovingAndInvalidatingKeepTheOthersRecords) {
  thread_.LoadList(Names({"a", "b", "c", "d"}));
  WaitUntilFinished(4);
  thread_.RemoveEntries({0, 2, 9});
  EXPECT_EQ(list_.files, Names({"b", "d"}));
  EXPECT_EQ(thread_.Item(1)->path, "d");
  EXPECT_EQ(thread_.FinishedCount(), 2);
  maker_.Forget();
  thread_.InvalidateEntries({1, 7});
  WaitUntilFinished(2);
  EXPECT_EQ(maker_.Asked(), Names({"d"}));
  thread_.RemoveEntries({0});
  EXPECT_EQ(list_.files, Names({"d"}));
}

TEST_F(WorkerOnTwoThreads, SurvivesChangesInEveryOrder) {
  std::vector<std::string> names;
  for (int i = 0; i < 200; ++i) names.push_back(std::to_string(i) + (i % 7 == 0 ? "bad" : ""));
  for (int round = 0; round < 50; ++round) {
    thread_.LoadList(names);
    thread_.JumpTo(round * 4);
    list_.marks[static_cast<std::size_t>(round)].selected = true;
    thread_.MoveSelectedTo(100);
    std::ranges::reverse(names);
    thread_.Reorder(names);
    thread_.RemoveEntries({0, round + 1, 199});
    thread_.InvalidateEntries({3});
  }
  WaitUntilFinished(197);
  for (int i = 0; i < list_.Count(); ++i) {
    ASSERT_NE(thread_.Item(i), nullptr);
    EXPECT_EQ(thread_.Item(i)->path, list_.files[static_cast<std::size_t>(i)]);
  }
}

}  // namespace
}  // namespace ml::catalogue
