#include "platform/atomic_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>

#include "platform/file_status.h"
#include "platform/linked_overwrite.h"
#include "platform/readable_file.h"
#include "platform/temporary_name.h"
#include "platform/text.h"
#include "support/fault_sweep.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

namespace fs = std::filesystem;
using test::Fault;
using test::Outcome;
using test::ReadAll;
using test::Refusal;

int CountTemporaries(const std::string& directory) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(directory)) {
    count += entry.path().filename().string().starts_with(".marrowlantern-");
  }
  return count;
}

enum class Kind { Plain, Symlink, Linked, New };
struct SweepCase {
  const char* name;
  Kind kind;
  std::size_t oldSize, newSize;
};
class AtomicSweep : public testing::TestWithParam<SweepCase> {};

TEST_P(AtomicSweep, LeavesTheOldFileOrTheNewOneWhole) {
  const auto [name, kind, oldSize, newSize] = GetParam();
  // No page of the old content equals one of the new.
  const std::string oldContent(oldSize, 'o'), newContent(newSize, 'n');
  const test::TempDir dir;
  const auto target = dir / "images/a.jpg", other = dir / "images/b.jpg", state = dir / "state";
  const auto prepare = [&, kind = kind] {
    fs::remove_all(dir / "images");
    fs::remove_all(state);
    fs::create_directories(dir / "images");
    if (kind != Kind::New) dir.Write(kind == Kind::Symlink ? "images/b.jpg" : "images/a.jpg", oldContent);
    if (kind == Kind::Symlink) fs::create_symlink("b.jpg", target);
    if (kind == Kind::Linked) fs::create_hard_link(target, other);
  };
  const auto act = [&](FileSystem& fileSystem) {
    AtomicFile file(target, {.read = IdentityOf(target), .stateDirectory = state, .fileSystem = &fileSystem});
    file.Write(newContent.substr(0, 100));
    file.Write(newContent.substr(100));
    file.Commit();
  };
  test::FaultyFileSystem quick(Fault::Eio, -1);
  const auto verify = [&, kind = kind](Outcome outcome) {
    const auto recovery = FinishInterruptedOverwrites(state, quick);
    EXPECT_TRUE(recovery.recovered.empty() && recovery.failures.empty());
    const auto content = ReadAll(target);
    const auto before = kind == Kind::New ? std::nullopt : std::optional(oldContent);
    EXPECT_TRUE(content == newContent || (content == before && outcome != Outcome::Done));
    if (kind == Kind::Symlink) {
      EXPECT_TRUE(fs::is_symlink(target));
    }
    if (kind == Kind::Linked) {
      EXPECT_TRUE(fs::equivalent(target, other));
    }
    RemoveStaleTemporaries(dir / "images");
    EXPECT_EQ(CountTemporaries(dir / "images"), 0);
    ReplaceFile(target, {}, {.stateDirectory = state, .fileSystem = &quick});  // nothing left behind stands in the way
    EXPECT_EQ(ReadAll(target), "");
  };
  for (const auto fault : test::kFaults) EXPECT_GT(test::SweepFaults(fault, prepare, act, verify), 10);
}

INSTANTIATE_TEST_SUITE_P(Targets, AtomicSweep,
                         testing::Values(SweepCase{"Plain", Kind::Plain, 9000, 13000},
                                         SweepCase{"Symlink", Kind::Symlink, 9000, 13000},
                                         SweepCase{"LinkedGrows", Kind::Linked, 9000, 30000},
                                         SweepCase{"LinkedShrinks", Kind::Linked, 30000, 9000},
                                         SweepCase{"New", Kind::New, 0, 13000}),
                         [](const auto& c) { return std::string(c.param.name); });

TEST(AtomicFile, LeavesNoTemporaryAfterAFailure) {
  const test::TempDir dir;
  const auto target = dir.Write("a", "old");
  const auto write = [&](FileSystem& fileSystem) { ReplaceFile(target, AsBytes("new"), {.fileSystem = &fileSystem}); };
  int left = 0;
  test::SweepFaults(
      Fault::Enospc, [] {}, write, [&](Outcome) { left += CountTemporaries(dir.Path()); });
  EXPECT_EQ(left, 0);
}

TEST(AtomicFile, KeepsPermissionsOwnerAndAttributes) {
  const test::TempDir dir;
  const auto target = dir.Write("a", "old");
  ASSERT_EQ(::chmod(target.c_str(), 0640), 0);
  const bool hasXattr = ::setxattr(target.c_str(), "user.rating", "5", 1, 0) == 0;
  const bool hasOwner = ::chown(target.c_str(), 65534, 65533) == 0;
  ReplaceFile(target, AsBytes("new"));
  struct stat status {};
  ASSERT_EQ(::stat(target.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  if (hasOwner) {
    EXPECT_TRUE(status.st_uid == 65534 && status.st_gid == 65533);
  }
  char value = 0;
  if (hasXattr) {
    EXPECT_TRUE(::getxattr(target.c_str(), "user.rating", &value, 1) == 1 && value == '5');
  }

  const auto mask = ::umask(027);
  ReplaceFile(dir / "fresh", {});
  ::umask(mask);
  EXPECT_EQ(ReadFileStatus(dir / "fresh")->mode, 0640U);
}

struct Meddling {
  const char* name;
  void (*act)(const std::string& path);
};
const Meddling kMeddlings[] = {
    {"longer", [](const std::string& path) { fs::resize_file(path, 100); }},
    {"later", [](const std::string& path) { SetModificationTime(path, ReadFileStatus(path)->modified + 1); }},
    {"another",
     [](const std::string& path) {
       fs::copy_file(path, path + "2");
       SetModificationTime(path + "2", ReadFileStatus(path)->modified);
       fs::rename(path + "2", path);
     }},
    {"gone", [](const std::string& path) { fs::remove(path); }}};

TEST(AtomicFile, NoticesAnotherProgramAtEveryMoment) {
  for (const auto& meddling : kMeddlings) {
    for (const bool late : {false, true}) {
      const testing::ScopedTrace trace(__FILE__, __LINE__, meddling.name);
      const test::TempDir dir;
      const auto target = dir.Write("a", "old");
      std::optional<std::string> meddled;
      const auto meddle = [&] { meddling.act(target), meddled = ReadAll(target); };
      AtomicFileOptions options{.read = IdentityOf(target)};
      if (late) options.check = [&](const std::string&) { meddle(); };
      EXPECT_THROW(
          {
            AtomicFile file(target, options);
            file.Write("new");
            if (!late) meddle();
            file.Commit();
          },
          UserError);
      EXPECT_EQ(ReadAll(target), meddled);
      EXPECT_EQ(CountTemporaries(dir.Path()), 0);
    }
  }
}

TEST(AtomicFile, ShowsTheNewFileToTheCheckAndObeysIt) {
  const test::TempDir dir;
  const auto target = dir.Write("a", "old");
  std::optional<std::string> seen;
  const auto refuse = [&](const std::string& path) { seen = ReadAll(path), throw UserError("no"); };
  EXPECT_EQ(Refusal([&] { ReplaceFile(target, AsBytes("new"), {.check = refuse}); }), "no");
  EXPECT_EQ(seen, "new");
  EXPECT_EQ(ReadAll(target), "old");
}

TEST(AtomicFile, NeverClobbersWhatItMustNotReplace) {
  const test::TempDir dir;
  const auto target = dir / "a";
  const auto appear = [&](const std::string&) { dir.Write("a", "theirs"); };
  EXPECT_THROW(ReplaceFile(target, {}, {.existing = ExistingFile::Refuse, .check = appear}), UserError);
  EXPECT_THROW(ReplaceFile(target, {}, {.existing = ExistingFile::Refuse}), UserError);
  ASSERT_EQ(::chmod(target.c_str(), 0444), 0);
  EXPECT_THROW(ReplaceFile(target, {}), UserError);
  EXPECT_EQ(ReadAll(target), "theirs");
  EXPECT_EQ(CountTemporaries(dir.Path()), 0);
}

TEST(AtomicFile, OnlyANewFileMayLastLater) {
  struct CountingFileSystem : test::FaultyFileSystem {
    int syncs = 0;
    CountingFileSystem() : FaultyFileSystem(Fault::Eio, -1) {}
    int Fsync(int fd) override { return ++syncs, FaultyFileSystem::Fsync(fd); }
  };
  const test::TempDir dir;
  const auto target = dir / "a.png";
  CountingFileSystem fileSystem;
  AtomicFileOptions options{.newFile = NewFileLasts::AfterSync, .stateDirectory = dir / "state"};
  options.fileSystem = &fileSystem;
  ReplaceFile(target, AsBytes("first"), options);
  EXPECT_EQ(fileSystem.syncs, 0);
  ReplaceFile(target, AsBytes("second"), options);
  EXPECT_EQ(fileSystem.syncs, 2) << "the file and its directory";

  fs::remove(target);
  options.check = [&](const std::string&) { dir.Write("a.png", "of another program"); };
  EXPECT_NE(Refusal([&] { ReplaceFile(target, AsBytes("third"), options); }), "");
  EXPECT_EQ(ReadAll(target), "of another program");
}

TEST(AtomicFile, NamesTheDirectoryThatCannotBeWritten) {
  const test::TempDir dir;
  dir.Write("closed/a", "old");
  fs::permissions(dir.Path(), fs::perms(0755));
  fs::permissions(dir / "closed", fs::perms(0555));
  fs::permissions(dir / "closed/a", fs::perms(0666));
  EXPECT_TRUE(test::RunAsNobody([&] {
    const auto words = Refusal([&] { ReplaceFile(dir / "closed/a", {}); });
    return words == "Unable to write to directory:\n" + dir / "closed/" + "\nPermission denied";
  }));
  EXPECT_EQ(ReadAll(dir / "closed/a"), "old");
}

TEST(AtomicFile, RefusesPipesAtOnce) {
  const test::TempDir dir;
  const auto pipe = dir / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0666), 0);
  const auto words = "Not a regular file:\n" + pipe;
  EXPECT_EQ(Refusal([&] { ReplaceFile(pipe, {}); }), words);
  EXPECT_EQ(Refusal([&] { ReadFile(pipe); }), words);
  EXPECT_EQ(Refusal([&] { ReadFile("/dev/null"); }), "Not a regular file:\n/dev/null");
  EXPECT_FALSE(OpenIfReadable(dir / "missing"));
}

TEST(ReadableFile, ReadsRangesAndKnowsItsLimit) {
  const test::TempDir dir;
  const auto path = dir.Write("a", "0123456789");
  const ReadableFile file(path);
  EXPECT_EQ(file.Range(8, UINT64_MAX).size(), 2U);
  EXPECT_EQ(file.Range(UINT64_MAX, 1).size(), 0U);
  EXPECT_EQ(ReadFile(path, 10).size(), 10U);
  EXPECT_THROW(ReadFile(path, 9), UserError);
}

TEST(TemporaryName, TellsOursFromOthersAndStaleFromBusy) {
  const auto name = NewTemporaryName();
  EXPECT_NE(name, NewTemporaryName());
  EXPECT_EQ(TemporaryNameOf(CopyNameOf(name)), name);
  const test::TempDir dir;
  dir.Write(name, "stale");
  dir.Write(CopyNameOf(name), "perhaps needed");
  for (const auto* foreign : {".marrowlantern-.tmp", ".marrowlantern-0123456789ABCDEF0123456789ABCDEX.tmp"}) {
    dir.Write(foreign, "foreign");
  }
  AtomicFile busy(dir / "a");
  EXPECT_EQ(RemoveStaleTemporaries(dir.Path()), 1);
  EXPECT_FALSE(fs::exists(dir / name));
  busy.Commit();
  EXPECT_EQ(ReadAll(dir / "a"), "");
}

TEST(LinkedOverwrite, SavesTheNewContentBesideAFileChangedAfterTheCrash) {
  const std::string oldContent(20000, 'o'), newContent(20000, 'n');
  std::size_t saved = 0;
  const test::TempDir dir;
  const auto target = dir / "images/a.jpg", state = dir / "state";
  const auto prepare = [&] {
    fs::remove_all(dir / "images");
    dir.Write("images/a.jpg", oldContent);
    fs::create_hard_link(target, dir / "images/b.jpg");
  };
  const auto act = [&](FileSystem& fileSystem) {
    ReplaceFile(target, AsBytes(newContent), {.stateDirectory = state, .fileSystem = &fileSystem});
  };
  const auto verify = [&](Outcome outcome) {
    if (outcome != Outcome::Killed) return;
    auto edited = *ReadAll(target);
    edited[5000] = edited[15000] = 'x';
    dir.Write("images/a.jpg", edited);
    test::FaultyFileSystem quick(Fault::Eio, -1);
    const auto recovery = FinishInterruptedOverwrites(state, quick);
    EXPECT_EQ(ReadAll(target), edited);
    if (recovery.recovered.empty()) return;
    ++saved;
    EXPECT_EQ(recovery.recovered.front(), dir / "images/a (recovered).jpg");
    EXPECT_EQ(ReadAll(dir / "images/a (recovered).jpg"), newContent);
  };
  test::SweepFaults(Fault::KillInWrite, prepare, act, verify);
  EXPECT_GT(saved, 3U);
}

}  // namespace
}  // namespace ml::platform
