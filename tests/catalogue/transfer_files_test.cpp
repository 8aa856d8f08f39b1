#include "catalogue/transfer_files.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <map>

#include "catalogue/delete_files.h"
#include "catalogue/new_name.h"
#include "platform/edit_journal.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "support/fake_trash.h"
#include "support/fakes.h"
#include "support/fault_sweep.h"
#include "support/temp_dir.h"

namespace ml::catalogue {
namespace {

namespace fs = std::filesystem;
using platform::FileExistsAnswer;
using Files = std::map<std::string, std::string>;  // path below the test's directory to content

/// A disk on which no renaming leads from one directory to another.
class TwoDisks : public test::FaultyFileSystem {
 public:
  using FaultyFileSystem::FaultyFileSystem;
  int RenameNoReplace(const std::string& from, const std::string& to) override {
    if (platform::DirectoryOf(from) == platform::DirectoryOf(to)) return FaultyFileSystem::RenameNoReplace(from, to);
    errno = EXDEV;
    return -1;
  }
};

class TransferTest : public testing::Test {
 protected:
  static Files Day() {
    return {{"day/a.crw", "raw"}, {"day/a.THM", "thm"}, {"day/a.txt", "note"}, {"day/b.jpg", "b"}, {"far/z", "z"}};
  }
  void Fill(const Files& files) {
    for (const char* folder : {"day", "far", "trash", "state"}) fs::remove_all(dir_ / folder);
    for (const auto& [name, content] : files) dir_.Write(name, content);
  }
  /// All but what the journal and the trash keep.
  Files Now() const {
    Files files;
    for (const auto& entry : fs::recursive_directory_iterator(dir_.Path())) {
      const auto name = entry.path().string().substr(dir_.Path().size() + 1);
      if (!entry.is_regular_file() || name.starts_with("trash") || name.starts_with("state")) continue;
      files[name] = *test::ReadAll(entry.path());
    }
    return files;
  }
  std::vector<std::string> Run(TransferKind kind, const std::vector<std::string>& names,
                               platform::FileSystem* faulty = nullptr, bool noted = true) {
    platform::EditBatch batch(journal_, "test");
    FileTransfer transfer(kind, dir_ / "far",
                          {.companions = companions_,
                           .trash = trash_,
                           .ask = ask_,
                           .batch = noted ? &batch : nullptr,
                           .fileSystem = faulty == nullptr ? platform::RealFileSystem() : *faulty,
                           .stateDirectory = dir_ / "state"});
    std::vector<std::string> made;
    for (const auto& name : names) {
      for (auto& path : transfer.Transfer(dir_ / ("day/" + name))) made.push_back(path);
    }
    return made;
  }

  const test::TempDir dir_;
  imagefiles::CompanionFinder companions_{{}};
  test::FakeTrash trash_{dir_ / "trash"};
  test::FakeClock clock_;
  test::ScriptedInteraction ask_;
  platform::EditJournal journal_{{.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state"}};
};

const Files kMoved{
    {"far/a.crw", "raw"}, {"far/a.THM", "thm"}, {"far/a.txt", "note"}, {"far/b.jpg", "b"}, {"far/z", "z"}};

TEST_F(TransferTest, CompanionsGoWithTheirImageAndUndoBringsAllBack) {
  Fill(Day());
  EXPECT_EQ(Run(TransferKind::Move, {"a.crw", "b.jpg"}).size(), 4U);
  EXPECT_EQ(Now(), kMoved);
  journal_.Undo();
  EXPECT_EQ(Now(), Day());

  auto both = kMoved;
  both.merge(Day());
  Run(TransferKind::Copy, {"a.crw", "b.jpg"});
  EXPECT_EQ(Now(), both);
  EXPECT_EQ(fs::last_write_time(dir_ / "day/b.jpg"), fs::last_write_time(dir_ / "far/b.jpg"));
  journal_.Undo();
  EXPECT_EQ(Now(), Day());
}

TEST_F(TransferTest, AnswersDecideWhatHappensToFilesInTheWay) {
  auto there = Day();
  there["far/a.crw"] = "old raw";
  there["far/a.txt"] = "old note";
  there["far/b.jpg"] = "old b";
  struct Case {
    std::deque<FileExistsAnswer> answers;
    Files after;  // below "far"
    bool undoes = true;
  };
  const Case cases[] = {
      {{FileExistsAnswer::OverwriteAll}, kMoved},
      {{FileExistsAnswer::SkipAll}, there, false},
      {{FileExistsAnswer::Skip, FileExistsAnswer::Overwrite},
       {{"far/a.crw", "old raw"}, {"far/a.txt", "old note"}, {"far/b.jpg", "b"}}},
      {{FileExistsAnswer::Overwrite, FileExistsAnswer::Skip, FileExistsAnswer::Overwrite},
       {{"far/a.crw", "raw"},
        {"far/a.THM", "thm"},
        {"far/a.txt", "old note"},
        {"far/b.jpg", "b"},
        {"day/a.txt", "note"}}},
      // A new name counts for the companions too.
      {{FileExistsAnswer::SaveAs, FileExistsAnswer::Skip},
       {{"far/n.crw", "raw"}, {"far/n.THM", "thm"}, {"far/n.txt", "note"}, {"far/a.crw", "old raw"}}},
  };
  for (const auto& [answers, after, undoes] : cases) {
    Fill(there);
    ask_.fileAnswers = answers;
    ask_.saveNames = {dir_ / "elsewhere/n.tif"};
    Run(TransferKind::Move, {"a.crw", "b.jpg"});
    const auto now = Now();
    for (const auto& [name, content] : after) EXPECT_EQ(now.contains(name) ? now.at(name) : "gone", content) << name;
    if (undoes) journal_.Undo();
    EXPECT_EQ(Now(), there);
  }
  Fill(there);
  ask_.fileAnswers = {FileExistsAnswer::Cancel};
  EXPECT_THROW(Run(TransferKind::Copy, {"b.jpg"}), platform::Cancelled);
  dir_.Write("far/sub/c.jpg", "");
  fs::rename(dir_ / "far/b.jpg", dir_ / "far/old.jpg");
  fs::create_directory(dir_ / "far/b.jpg");
  EXPECT_THROW(Run(TransferKind::Move, {"b.jpg"}), platform::UserError) << "a directory is never replaced";
}

TEST_F(TransferTest, UndoBringsFilesBackFromAnotherDisk) {
  auto there = Day();
  there["far/a.crw"] = "old raw";
  there["far/a.txt"] = "old note";
  Fill(there);
  ask_.fileAnswers = {FileExistsAnswer::OverwriteAll};
  constexpr int kNever = 1'000'000;
  TwoDisks disks(test::Fault::Eio, kNever);
  Run(TransferKind::Move, {"a.crw", "b.jpg"}, &disks);
  EXPECT_EQ(Now(), kMoved);
  EXPECT_TRUE(journal_.Undo().notUndoable.empty());
  EXPECT_EQ(Now(), there);
}

TEST_F(TransferTest, NothingIsLostWhateverFails) {
  for (const bool twoDisks : {false, true}) {
    for (const auto kind : {TransferKind::Move, TransferKind::Copy}) {
      for (const auto fault : test::kFaults) {
        for (int step = 0, met = 1; met != 0 && step < 500; ++step) {
          Fill(Day());
          TwoDisks disks(fault, step);
          test::FaultyFileSystem disk(fault, step);
          auto& used = twoDisks ? disks : disk;
          const auto run = [&] {
            try {
              Run(kind, {"a.crw"}, &used, false);
              return 0;
            } catch (const std::exception&) {
              return 1;
            }
          };
          const int result = test::IsKill(fault) ? test::RunInChild(run) : run();
          met = test::IsKill(fault) ? result == test::kKilledExit : used.Hit();
          const auto now = Now();
          const auto holds = [&](const std::string& name, const char* content) {
            return now.contains(name) && now.at(name) == content;
          };
          for (const auto& [name, content] : {std::pair("a.crw", "raw"), {"a.THM", "thm"}, {"a.txt", "note"}}) {
            ASSERT_TRUE(holds(std::string("day/") + name, content) || holds(std::string("far/") + name, content))
                << name << " fault " << static_cast<int>(fault) << " at " << step << " two disks " << twoDisks;
            ASSERT_TRUE(result != 0 || holds(std::string("far/") + name, content)) << name;
          }
        }
      }
    }
  }
}

TEST_F(TransferTest, DeletedImagesTakeTheirCompanionsAndComeBack) {
  const auto remove = [&](const std::string& name, DeleteTo to) {
    platform::EditBatch batch(journal_, "delete");
    DeleteImage(dir_ / ("day/" + name), to, {.companions = companions_, .trash = trash_, .batch = &batch});
  };
  Fill(Day());
  remove("a.crw", DeleteTo::Trash);
  EXPECT_EQ(Now(), (Files{{"day/b.jpg", "b"}, {"far/z", "z"}}));
  journal_.Undo();
  EXPECT_EQ(Now(), Day());

  auto there = Day();
  there["day/Deleted/a.txt"] = "older";
  Fill(there);
  remove("a.crw", DeleteTo::DeletedFolder);
  EXPECT_EQ(Now().at("day/Deleted/a.crw"), "raw");
  EXPECT_EQ(Now().at("day/Deleted/a.txt"), "note") << "the same name is replaced";
  journal_.Undo();
  EXPECT_EQ(Now(), there);

  remove("b.jpg", DeleteTo::Nowhere);
  EXPECT_FALSE(Now().contains("day/b.jpg"));
  trash_.broken = true;
  EXPECT_THROW(remove("a.crw", DeleteTo::Trash), platform::UserError);
  EXPECT_TRUE(Now().contains("day/a.crw")) << "never deleted instead";
  dir_.Write("far/a.jpg", "");
  dir_.Write("far/Deleted", "a file");
  EXPECT_THROW(DeleteImage(dir_ / "far/a.jpg", DeleteTo::DeletedFolder, {.companions = companions_, .trash = trash_}),
               platform::UserError);
}

TEST_F(TransferTest, NothingIsLostOnTheWayToTheDeletedFolder) {
  const auto remove = [&](platform::FileSystem& fileSystem) {
    try {
      DeleteImage(dir_ / "day/a.crw", DeleteTo::DeletedFolder,
                  {.companions = companions_, .trash = trash_, .fileSystem = fileSystem});
    } catch (const fs::filesystem_error& error) {  // of the trash, for a file that only seemed to be in the way
      throw platform::UserError(error.what());
    }
  };
  const auto verify = [&](test::Outcome outcome) {
    auto now = Now();
    for (const auto& [name, content] : {std::pair("a.crw", "raw"), {"a.THM", "thm"}, {"a.txt", "note"}}) {
      const bool moved = now[std::string("day/Deleted/") + name] == content;
      EXPECT_NE(moved, now[std::string("day/") + name] == content) << name;
      EXPECT_TRUE(moved || outcome != test::Outcome::Done) << name;
    }
  };
  for (const auto fault : test::kFaults) {
    test::SweepFaults(
        fault, [&] { Fill(Day()); }, remove, verify);
  }
}

TEST_F(TransferTest, NewNamesAreRefusedForTheirReasons) {
  auto there = Day();
  there["day/taken.crw"] = there["day/thm.THM"] = there["day/B2.jpg"] = "x";
  Fill(there);
  const std::string long31(27, 'n'), long32(28, 'n');
  struct Case {
    const char* old;
    std::string name, refusal;
  };
  const Case cases[] = {
      {"b.jpg", "c.jpg", ""},
      {"b.jpg", "B.jpg", ""},
      {"b.jpg", "c?.jpg", "Filename prefix must not contain"},
      {"b.jpg", "c/d.jpg", "Filename prefix must not contain"},
      {"b.jpg", "", "Filename prefix must not contain"},
      {"b.jpg", "c.jpeg", "The file extension must not be changed"},
      {"b.jpg", "B2.jpg", "an image with the same name"},
      {"a.crw", "taken.crw", "an image with the same name"},
      {"a.crw", "thm.crw", "a THM file with the same name"},
      {"a.crw", long31 + ".crw", ""},
      {"a.crw", long32 + ".crw", "no more than 31 characters long:\n" + long32},
      {"b.jpg", long32 + ".jpg", ""},
  };
  for (const auto& [old, name, refusal] : cases) {
    const auto answer = RefuseNewName(dir_ / (std::string("day/") + old), name, companions_);
    EXPECT_EQ(answer.has_value(), !refusal.empty()) << name;
    EXPECT_NE(answer.value_or("").find(refusal), std::string::npos) << name;
  }
}

TEST_F(TransferTest, TheDestinationIsMadeOnlyIfWanted) {
  Fill(Day());
  const auto day = dir_ / "day";
  EXPECT_EQ(TransferDirectory(" " + (dir_ / "far/") + " ", day, ask_), dir_ / "far");
  EXPECT_THROW(TransferDirectory(dir_ / "far/../day", day, ask_), platform::UserError);
  EXPECT_THROW(TransferDirectory(dir_ / "far/z", day, ask_), platform::UserError);
  ask_.buttons = {platform::Button::No, platform::Button::Yes, platform::Button::Yes};
  EXPECT_EQ(TransferDirectory(dir_ / "new/deep", day, ask_), std::nullopt);
  EXPECT_FALSE(fs::exists(dir_ / "new"));
  EXPECT_EQ(TransferDirectory(dir_ / "new/deep", day, ask_), dir_ / "new/deep");
  EXPECT_TRUE(fs::is_directory(dir_ / "new/deep"));
  EXPECT_THROW(TransferDirectory(dir_ / "far/z/below", day, ask_), platform::UserError);
}

}  // namespace
}  // namespace ml::catalogue
