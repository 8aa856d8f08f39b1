#include "catalogue/directory_edits.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

#include "catalogue/directory_facts.h"
#include "platform/edit_journal.h"
#include "platform/errors.h"
#include "support/fake_trash.h"
#include "support/fakes.h"
#include "support/temp_dir.h"

namespace ml::catalogue {
namespace {

namespace fs = std::filesystem;

class DirectoryEdits : public testing::Test {
 protected:
  DirectoryEdits() {
    dir_.Write("day/a.jpg", "image");
    dir_.Write("day/sub/b.jpg", "other");
    dir_.Write("taken", "file");
  }
  template <class Act>
  void Edit(Act act) {
    platform::EditBatch batch(journal_, "test");
    act(batch);
  }
  void Rename(const std::string& from, const std::string& name) {
    Edit([&](auto& batch) { EXPECT_EQ(RenameDirectory(dir_ / from, name, &batch), dir_ / name); });
  }

  const test::TempDir dir_;
  test::FakeTrash trash_{dir_ / "trash"};
  test::FakeClock clock_;
  platform::EditJournal journal_{{.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state"}};
};

TEST_F(DirectoryEdits, DeletedDirectoriesComeBackWhole) {
  Edit([&](auto& batch) { DeleteDirectory(dir_ / "day", DeleteTo::Trash, trash_, &batch); });
  EXPECT_FALSE(fs::exists(dir_ / "day"));
  journal_.Undo();
  EXPECT_EQ(test::ReadAll(dir_ / "day/sub/b.jpg"), "other");

  Edit([&](auto& batch) { DeleteDirectory(dir_ / "day", DeleteTo::Nowhere, trash_, &batch); });
  EXPECT_FALSE(fs::exists(dir_ / "day"));
  EXPECT_THROW(journal_.Undo(), platform::UserError);
  dir_.Write("day/a.jpg", "");
  ASSERT_EQ(symlink("day", (dir_ / "link").c_str()), 0);
  DeleteDirectory(dir_ / "link", DeleteTo::Nowhere, trash_, nullptr);
  EXPECT_TRUE(fs::exists(dir_ / "day/a.jpg")) << "a link goes alone";
}

TEST_F(DirectoryEdits, NoVolumeIsEmptiedWithTheDirectoryItIsMountedIn) {
  dir_.Write("volume/precious.jpg", "image");
  const auto place = dir_ / "day/sub";
  if (mount((dir_ / "volume").c_str(), place.c_str(), nullptr, MS_BIND, nullptr) != 0) GTEST_SKIP() << "may not mount";
  for (const auto to : {DeleteTo::Nowhere, DeleteTo::Trash}) {
    EXPECT_THROW(DeleteDirectory(dir_ / "day", to, trash_, nullptr), platform::UserError);
  }
  ASSERT_EQ(umount(place.c_str()), 0);
  EXPECT_TRUE(fs::exists(dir_ / "volume/precious.jpg"));
  EXPECT_TRUE(fs::exists(dir_ / "day/a.jpg"));
}

TEST_F(DirectoryEdits, NothingIsDeletedWhereVolumesCannotBeLookedFor) {
  std::string deep = dir_ / "day/sub";
  for (int i = 0; i < 30; ++i) deep += "/d";
  fs::create_directories(deep);
  const int lowest = open("/dev/null", O_RDONLY);
  close(lowest);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  for (const auto to : {DeleteTo::Nowhere, DeleteTo::Trash}) {
    const rlimit few{static_cast<rlim_t>(lowest) + 10, limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    EXPECT_THROW(DeleteDirectory(dir_ / "day", to, trash_, nullptr), platform::UserError);
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_TRUE(fs::exists(dir_ / "day/a.jpg"));
    EXPECT_TRUE(fs::exists(deep));
  }
}

TEST_F(DirectoryEdits, RenamingIsUndoneThoughTheDirectoryWasUsedSince) {
  Rename("day", "Day");
  Rename("Day", "caf\xe9");
  dir_.Write("caf\xe9/later.txt", "new");
  fs::remove(dir_ / "caf\xe9/a.jpg");
  journal_.Undo();
  journal_.Undo();
  EXPECT_EQ(test::ReadAll(dir_ / "day/later.txt"), "new");
  EXPECT_EQ(test::ReadAll(dir_ / "day/sub/b.jpg"), "other");
  EXPECT_THROW(RenameDirectory(dir_ / "day", "taken", nullptr), platform::UserError);
  EXPECT_EQ(test::ReadAll(dir_ / "taken"), "file");
}

TEST_F(DirectoryEdits, NewFoldersAreRefusedWhereSomethingStands) {
  EXPECT_TRUE(fs::is_directory(MakeFolder(dir_ / "day", "new")));
  EXPECT_THROW(MakeFolder(dir_ / "day", "sub"), platform::UserError);
  EXPECT_THROW(MakeFolder(dir_ / "missing", "new"), platform::UserError);
  for (const char* name : {"", ".", "..", "a/b", "what?"}) EXPECT_TRUE(RefuseFolderName(name)) << name;
  EXPECT_FALSE(RefuseFolderName("2003-10-04 caf\xe9"));
}

TEST_F(DirectoryEdits, MeasuringCountsAllBelowAndStopsWhenTold) {
  ASSERT_EQ(symlink("..", (dir_ / "day/sub/up").c_str()), 0);
  const auto facts = MeasureDirectory(dir_ / "day", {}, [](const auto&) {});
  EXPECT_EQ(facts.files, 3U) << "links are counted, not followed";
  EXPECT_EQ(facts.directories, 1U);
  EXPECT_EQ(facts.bytes, 5U + 5U + 2U);
  std::stop_source stop;
  int told = 0;
  MeasureDirectory(dir_.Path(), stop.get_token(), [&](const auto&) { ++told, stop.request_stop(); });
  EXPECT_EQ(told, 1);
  EXPECT_EQ(MeasureDirectory(dir_ / "missing", {}, [](const auto&) {}).unreadable, 1U);
}

}  // namespace
}  // namespace ml::catalogue
