#include "platform/file_status.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/child_process.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

using Policy = ModificationTimePolicy;
constexpr std::int64_t kBefore1970 = -1'500'000'001;

TEST(FileStatus, GuardPutsBackOnlyWhatItsOwnerDisturbed) {
  struct Case {
    const char* name;
    bool lift, wrote;
    Policy policy;
    bool modeBack, timeBack;
  };
  const Case cases[] = {{"nothing done", false, false, Policy::Restore, false, false},
                        {"lifted", true, false, Policy::LetStand, true, false},
                        {"wrote", false, true, Policy::LetStand, true, false},
                        {"lifted, preserving", true, false, Policy::Restore, true, true}};
  for (const auto& c : cases) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, c.name);
    const test::TempDir dir;
    const auto path = dir.Write("a", "x");
    SetModificationTime(path, kBefore1970);
    SetReadOnly(path);
    const auto before = ReadFileStatus(path);
    ASSERT_EQ(before->modified, kBefore1970);
    {
      FileStatusGuard guard(path, c.policy);
      if (c.lift) {
        EXPECT_TRUE(guard.MakeWritable());
      }
      if (c.wrote) guard.Wrote();
      EXPECT_EQ(ReadFileStatus(path)->mode & S_IWUSR, c.lift ? S_IWUSR : 0U);
      dir.Write("a", "edited");
      ASSERT_EQ(::chmod(path.c_str(), 0777), 0);
    }
    const auto after = ReadFileStatus(path);
    EXPECT_EQ(after->mode == before->mode, c.modeBack);
    EXPECT_EQ(after->modified == before->modified, c.timeBack);
  }
}

TEST(FileStatus, ReadOnlyIsWhatThisUserMayNotWrite) {
  const test::TempDir dir;
  const auto path = dir.Write("a", "x");
  std::filesystem::permissions(dir.Path(), std::filesystem::perms(0755));
  ASSERT_EQ(::chmod(path.c_str(), 0466), 0);
  EXPECT_TRUE(IsReadOnly(path));
  EXPECT_TRUE(MakeWritable(path));
  EXPECT_EQ(ReadFileStatus(path)->mode, 0666U);
  SetReadOnly(path);
  EXPECT_EQ(ReadFileStatus(path)->mode, 0444U);
  EXPECT_FALSE(MakeWritable(dir / "missing"));
  EXPECT_FALSE(IsReadOnly(dir / "missing"));

  ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
  if (::geteuid() != 0) return;  // the rest needs a file of somebody else
  EXPECT_TRUE(test::RunAsNobody([&] { return IsReadOnly(path) && !MakeWritable(path); }));
}

TEST(FileStatus, SettingTheTimeLeavesTheLastAccess) {
  const test::TempDir dir;
  const auto path = dir.Write("a", "x");
  struct stat before {
  }, after{};
  ASSERT_EQ(::stat(path.c_str(), &before), 0);
  SetModificationTime(path, 1'000'000'000'123'456'789);
  ASSERT_EQ(::stat(path.c_str(), &after), 0);
  EXPECT_EQ(after.st_mtim.tv_sec, 1'000'000'000);
  EXPECT_EQ(after.st_mtim.tv_nsec, 123'456'789);
  EXPECT_EQ(after.st_atim.tv_nsec, before.st_atim.tv_nsec);
}

}  // namespace
}  // namespace ml::platform
