#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "catalogue/image_item_maker.h"
#include "catalogue/thumbnail_thread.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::catalogue {
namespace {

namespace fs = std::filesystem;

/// The worker on real files, which others change while it works.
class WorkerOnFiles : public testing::Test {
 protected:
  void Load(int count) {
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) paths.push_back(dir_.Write("images/" + std::to_string(i) + ".jpg", photo_));
    worker_.LoadList(paths);
  }
  void WaitUntilFinished(int count) {
    while (worker_.FinishedCount() < count) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  const std::string& At(int index) const { return list_.files[static_cast<std::size_t>(index)]; }

  const test::TempDir dir_;
  const std::string photo_ = test::MakePhoto({.width = 320, .height = 240, .thumbnail = false});
  ImageList list_;
  CThumbnailThread worker_{list_, ImageItemMaker({}), [](int) {}, 2};
};

TEST_F(WorkerOnFiles, WhatBecameOfAFileIsItsOwnMatterAndIsTriedAgainWhenAsked) {
  Load(6);
  WaitUntilFinished(6);
  worker_.Pause();
  fs::remove(At(0));
  fs::resize_file(At(1), photo_.size() / 8);
  fs::remove(At(2));
  ASSERT_EQ(::mkfifo(At(2).c_str(), 0600), 0) << "to open it for reading would hang";
  fs::remove(At(3));
  fs::create_directory(At(3));
  fs::resize_file(At(4), 0);
  worker_.InvalidateEntries({0, 1, 2, 3, 4});
  WaitUntilFinished(6);
  for (const int index : {0, 2, 3, 4}) {
    EXPECT_EQ(worker_.State(index), ThumbnailState::Failed) << index;
    EXPECT_NE(worker_.Item(index)->failure, "") << index;
  }
  EXPECT_EQ(worker_.State(5), ThumbnailState::Done);
  dir_.Write("images/0.jpg", photo_);
  worker_.Pause();
  worker_.Resume();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(worker_.State(0), ThumbnailState::Failed) << "nobody asked";
  worker_.InvalidateEntries({0});
  WaitUntilFinished(6);
  EXPECT_EQ(worker_.State(0), ThumbnailState::Done);
}

TEST_F(WorkerOnFiles, SurvivesTheLossOfTheDirectoryUnderneath) {
  Load(200);
  WaitUntilFinished(3);
  fs::remove_all(dir_ / "images");
  WaitUntilFinished(200);
  EXPECT_EQ(worker_.State(0), ThumbnailState::Done) << "what was made stays";
  EXPECT_EQ(worker_.State(199), ThumbnailState::Failed);
  worker_.LoadList({});
  EXPECT_EQ(worker_.FinishedCount(), 0);
  worker_.JumpTo(7);
  worker_.RemoveEntries({3});
  Load(1);
  WaitUntilFinished(1);
  EXPECT_EQ(worker_.State(0), ThumbnailState::Done);
}

}  // namespace
}  // namespace ml::catalogue
