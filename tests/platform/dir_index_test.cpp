#include "platform/dir_index.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <ctime>

#include "platform/companion_set.h"
#include "platform/read_directory.h"
#include "support/temp_dir.h"

namespace {

using ml::platform::DirIndex;
using ml::platform::FindCompanions;
using ml::test::TempDir;

void SetDirectoryTime(const std::string& directory, timespec time) {
  const timespec times[2] = {time, time};
  ASSERT_EQ(::utimensat(AT_FDCWD, directory.c_str(), times, 0), 0);
}

TEST(DirIndex, PrefersTheSpellingThenTheStemThenTheSmallestName) {
  const TempDir dir;
  for (const char* name : {"a.THM", "a.Thm", "A.thm", "b.THM", "B.Thm", "\xC3\x84.txt", "x\xE4.wav"})
    dir.Write(name, "");
  DirIndex index(dir.Path());
  EXPECT_EQ(index.Find("A.thm"), "A.thm");
  EXPECT_EQ(index.Find("a.thm"), "a.THM");
  EXPECT_EQ(index.Find("b.thm"), "b.THM");
  EXPECT_EQ(index.Find("\xC3\xA4.TXT"), "\xC3\x84.txt");
  EXPECT_EQ(index.Find("X\xE4.WAV"), "x\xE4.wav") << "bytes that are no UTF-8 fold as ASCII";
  EXPECT_EQ(index.Find("X\xC4.WAV"), std::nullopt);
  EXPECT_EQ(index.Find("c.thm"), std::nullopt);
}

TEST(DirIndex, DoesNotTrustATimeWhoseTickMayStillRun) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  // A tick that is not over, and whole seconds as coarse file systems keep them.
  for (const timespec time : {timespec{now.tv_sec + 60, 7}, timespec{now.tv_sec, 0}}) {
    const TempDir dir;
    DirIndex index(dir.Path());
    SetDirectoryTime(dir.Path(), time);
    EXPECT_EQ(index.Find("b"), std::nullopt);
    dir.Write("B", "");
    SetDirectoryTime(dir.Path(), time);
    EXPECT_EQ(index.Find("b"), "B");
  }
}

TEST(DirIndex, ReadsAgainOnlyWhenTheTimeMoved) {
  const TempDir dir;
  const timespec old{1'000'000'000, 5};
  dir.Write("A", "");
  SetDirectoryTime(dir.Path(), old);
  DirIndex index(dir.Path());
  ASSERT_EQ(index.Find("a"), "A");
  dir.Write("B", "");
  SetDirectoryTime(dir.Path(), old);
  EXPECT_EQ(index.Find("b"), std::nullopt) << "an unchanged time stands for an unchanged directory";
  EXPECT_EQ(index.Find("B"), "B") << "the exact name is asked for on disk";
  dir.Write("C", "");
  EXPECT_EQ(index.Find("c"), "C");
}

TEST(DirIndex, AMissingDirectoryHoldsNothing) {
  const TempDir dir;
  DirIndex index(dir / "later");
  EXPECT_FALSE(index.Refresh());
  EXPECT_EQ(index.Find("a"), std::nullopt);
  dir.Write("later/A", "");
  EXPECT_EQ(index.Find("a"), "A");
}

TEST(CompanionSet, TakesWhatBelongsToTheFileInBothOrders) {
  const TempDir dir;
  const auto raw = dir.Write("IMG_1.CRW", "");
  const auto thm = dir.Write("IMG_1.thm", "");
  const auto txt = dir.Write("img_1.TXT", "");
  const auto wav = dir.Write("IMG_1.Wav", "");
  const auto jpg = dir.Write("IMG_1.JPG", "");
  DirIndex index(dir.Path());
  using Paths = std::vector<std::string>;
  const auto all = FindCompanions(raw, {.hasThm = true, .hasBoundJpeg = true}, index);
  EXPECT_EQ(all.Paths(), (Paths{raw, thm, txt, wav, jpg}));
  EXPECT_EQ(all.PathsToDelete(), (Paths{raw, thm, jpg, txt, wav}));
  EXPECT_EQ(FindCompanions(raw, {}, index).Paths(), (Paths{raw, txt, wav}));
  EXPECT_EQ(FindCompanions(dir / "IMG_1.tif", {}, index).Paths(), (Paths{txt, wav})) << "the file itself is missing";
}

TEST(CompanionSet, AFileIsNoCompanionOfItself) {
  const TempDir dir;
  const auto lower = dir.Write("a.jpg", ""), upper = dir.Write("a.JPG", ""), alone = dir.Write("b.JPG", "");
  DirIndex index(dir.Path());
  const auto found = [&](const std::string& path) { return ml::platform::FindCompanion(path, ".jpg", index); };
  EXPECT_EQ(found(lower), "");
  EXPECT_EQ(found(upper), lower);
  EXPECT_EQ(found(alone), "");
}

TEST(CompanionSet, FilesOfOneDirectoryShareItsIndex) {
  const TempDir dir, other;
  const timespec old{1'000'000'000, 5};
  const auto found = [&] { return ml::platform::FindCompanion(dir / "a.crw", ".thm"); };
  dir.Write("b.crw", "");
  SetDirectoryTime(dir.Path(), old);
  EXPECT_EQ(found(), "");
  const auto thm = dir.Write("a.Thm", "");
  SetDirectoryTime(dir.Path(), old);
  EXPECT_EQ(found(), "") << "not listed once a file";
  EXPECT_EQ(ml::platform::FindCompanion(other / "a.crw", ".thm"), "");
  EXPECT_EQ(found(), thm);
  dir.Write("c.crw", "");
  std::remove(thm.c_str());
  EXPECT_EQ(found(), "");
}

TEST(CompanionSet, DirectoriesAndFifosAreNoCompanions) {
  const TempDir dir;
  const auto image = dir.Write("a.jpg", "");
  dir.Write("a.txt/inside", "");
  ASSERT_EQ(::mkfifo((dir / "a.wav").c_str(), 0600), 0);
  DirIndex index(dir.Path());
  EXPECT_EQ(FindCompanions(image, {.hasThm = true, .hasBoundJpeg = true}, index).Paths(),
            std::vector<std::string>{image});
}

}  // namespace
