#include "platform/edit_journal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <map>

#include "platform/atomic_file.h"
#include "platform/edit_batch.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/in_place_patch.h"
#include "platform/journal_files.h"
#include "platform/temporary_name.h"
#include "support/byte_string.h"
#include "support/fake_trash.h"
#include "support/fakes.h"
#include "support/fault_sweep.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

namespace fs = std::filesystem;
using test::BytesOf;
using test::Outcome;
using test::ReadAll;

class EditJournalTest : public testing::Test {
 protected:
  EditJournal Journal() { return Journal(quick); }
  EditJournal Journal(FileSystem& fileSystem) {
    return EditJournal({.trash = trash, .clock = clock, .stateDirectory = state, .fileSystem = fileSystem});
  }

  /// A small collection, all files with a time of their own.
  void Prepare() {
    for (const auto& entry : fs::directory_iterator(dir.Path())) fs::remove_all(entry.path());
    for (const auto* name : {"raw", "jpeg", "a", "b", "doomed", "touched"}) {
      const auto path = dir.Write("images/" + std::string(name), "content of " + std::string(name));
      SetModificationTime(path, 1'000'000'000'000'000'000 + name[0]);
    }
    ASSERT_EQ(::chmod((dir / "images/jpeg").c_str(), 0640), 0);
  }

  /// Names with content, time and permissions.
  std::map<std::string, std::string> Snapshot() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(dir / "images")) {
      const auto path = entry.path().string();
      const auto status = *ReadFileStatus(path);
      files[path] = *ReadAll(path) + " " + std::to_string(status.modified) + " " + std::to_string(status.mode);
    }
    return files;
  }

  /// Every kind of edit once, several of them on one file, and two files that swap their names.
  void EditEverything(FileSystem& fileSystem) {
    auto journal = Journal(fileSystem);
    EditBatch batch(journal, "Everything");
    const auto image = [&](const char* name) { return dir / "images/" + name; };
    const auto rename = [&](const std::string& from, const std::string& to) {
      batch.WillRename(from, to);
      if (fileSystem.RenameNoReplace(from, to) != 0) ThrowFileError("", from, errno);
    };
    const EditOptions patching{.recorder = &batch, .stateDirectory = state, .fileSystem = &fileSystem};
    const AtomicFileOptions writing{.recorder = &batch, .stateDirectory = state, .fileSystem = &fileSystem};
    ApplyPatches(image("raw"),
                 {.fileSize = 14, .patches = {{0, BytesOf("con"), BytesOf("CON")}}, .appended = BytesOf("tail")},
                 patching);
    auto keeping = writing;
    keeping.kept = {{.oldOffset = 0, .newOffset = 4, .size = 7}, {.oldOffset = 10, .newOffset = 12, .size = 5}};
    ReplaceFile(image("jpeg"), BytesOf("big content: jpeg"), keeping);
    ReplaceFile(image("jpeg"), BytesOf("quite another content"), writing);
    ApplyPatches(image("jpeg"), {.fileSize = 21, .patches = {{6, BytesOf("another"), BytesOf("ANOTHER")}}}, patching);
    rename(image("a"), image("a@"));
    rename(image("b"), image("a"));
    rename(image("a@"), image("b"));
    ReplaceFile(image("copy"), BytesOf("a copy"), writing);
    batch.WillTrash(image("doomed"));
    trash.Put(image("doomed"));
    batch.WillChangeStatus(image("touched"));
    SetModificationTime(image("touched"), 5, fileSystem);
    batch.Commit();
  }

  /// Undoes until nothing is left to undo; false if a batch was refused.
  bool UndoAll() {
    auto journal = Journal();
    while (!journal.List().empty()) {
      try {
        journal.Undo();
      } catch (const UserError& error) {
        ADD_FAILURE() << error.what();
        return false;
      }
    }
    return true;
  }

  const test::TempDir dir;
  const std::string state = dir / "state";
  test::FakeTrash trash{dir / "trash"};
  test::FakeClock clock;
  test::FaultyFileSystem quick{test::Fault::Eio, -1};
};

TEST_F(EditJournalTest, BringsBackNamesBytesTimesAndPermissions) {
  Prepare();
  const auto before = Snapshot();
  EditEverything(quick);
  EXPECT_NE(Snapshot(), before);
  const auto entries = Journal().List();
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].what, "Everything");
  EXPECT_EQ(entries[0].when, clock.now());
  EXPECT_EQ(entries[0].files.size(), 8U);  // the copy and the name between included
  Journal().Undo();
  EXPECT_EQ(Snapshot(), before);
  EXPECT_THROW(Journal().Undo(), UserError);
  EXPECT_TRUE(fs::is_empty(JournalDirectory(state)));
}

TEST_F(EditJournalTest, UndoesWhateverWasDoneBeforeAKill) {
  std::map<std::string, std::string> before;
  const auto prepare = [&] { Prepare(), before = Snapshot(); };
  for (const auto fault : {test::Fault::Kill, test::Fault::KillInWrite}) {
    test::SweepFaults(
        fault, prepare, [&](FileSystem& fileSystem) { EditEverything(fileSystem); },
        [&](Outcome) {
          RemoveStaleTemporaries(dir / "images");
          EXPECT_TRUE(UndoAll());
          auto now = Snapshot();
          // Only a time may differ: an edit that did not change the bytes has nothing to be undone.
          EXPECT_EQ(now, before);
        });
  }
}

TEST_F(EditJournalTest, GoesOnAfterAnUndoThatWasKilledOrFailed) {
  std::map<std::string, std::string> before;
  const auto prepare = [&] {
    Prepare();
    before = Snapshot();
    EditEverything(quick);
  };
  for (const auto fault : test::kFaults) {
    test::SweepFaults(
        fault, prepare, [&](FileSystem& fileSystem) { Journal(fileSystem).Undo(); },
        [&](Outcome) {
          RemoveStaleTemporaries(dir / "images");
          EXPECT_TRUE(UndoAll());
          EXPECT_EQ(Snapshot(), before);
        });
  }
}

TEST_F(EditJournalTest, NeverStandsInTheWayOfAnEdit) {
  const auto path = dir / "images/jpeg";
  for (const auto fault : {test::Fault::Eio, test::Fault::Enospc, test::Fault::DiskFull}) {
    test::SweepFaults(
        fault, [&] { Prepare(); },
        [&](FileSystem& fileSystem) {
          auto journal = Journal(fileSystem);  // only the journal meets the fault
          EditBatch batch(journal, "Edit");
          ReplaceFile(path, BytesOf("new"), {.recorder = &batch, .fileSystem = &quick});
          batch.Commit();
          EXPECT_EQ(ReadAll(path), "new");
          if (batch.Undoable()) {
            EXPECT_EQ(Journal().List().size(), 1U);
          }
        },
        [&](Outcome outcome) {
          EXPECT_EQ(outcome, Outcome::Done);
          if (Journal().List().empty()) return;
          Journal().Undo();
          EXPECT_EQ(ReadAll(path), "content of jpeg");
        });
  }
}

TEST_F(EditJournalTest, RefusesWhenAnyFileWasChangedSince) {
  using Meddle = void (*)(const std::string& images);
  const Meddle meddlings[] = {[](const std::string& images) { SetModificationTime(images + "raw", 7); },
                              [](const std::string& images) { fs::resize_file(images + "jpeg", 3); },
                              [](const std::string& images) { fs::remove(images + "b"); },
                              [](const std::string& images) { fs::copy_file(images + "raw", images + "doomed"); },
                              [](const std::string& images) { fs::resize_file(images + "copy", 3); },
                              [](const std::string& images) { SetReadOnly(images + "touched"); }};
  for (const auto meddle : meddlings) {
    Prepare();
    EditEverything(quick);
    meddle(dir / "images/");
    const auto now = Snapshot();
    EXPECT_THROW(Journal().Undo(), UserError);
    EXPECT_EQ(Snapshot(), now);
    EXPECT_EQ(Journal().List().size(), 1U);
  }
}

TEST_F(EditJournalTest, TakesBackOneBatchAfterTheOther) {
  Prepare();
  const auto path = dir / "images/jpeg";
  auto journal = Journal();
  for (const auto* content : {"one", "two"}) {
    EditBatch batch(journal, content);
    FileStatusGuard guard(path, ModificationTimePolicy::LetStand);
    SetReadOnly(path);
    ASSERT_TRUE(guard.MakeWritable());
    ReplaceFile(path, BytesOf(content), {.recorder = &batch, .fileSystem = &quick});
  }
  EXPECT_EQ(journal.Undo().what, "two");
  EXPECT_EQ(ReadAll(path), "one");
  EXPECT_EQ(journal.Undo().what, "one");
  EXPECT_EQ(ReadAll(path), "content of jpeg");
}

TEST_F(EditJournalTest, TakesBackEditsOfOneFileByEachOfItsNames) {
  Prepare();
  const auto names = {dir / "images/jpeg", dir / "images/linked"};
  fs::create_hard_link(*names.begin(), *std::prev(names.end()));
  const auto before = Snapshot();
  auto journal = Journal();
  {
    EditBatch batch(journal, "Caption");
    for (const auto& name : names) {
      const auto old = ReadAll(name).value();
      const std::vector<KeptStretch> kept{{.newOffset = 8, .size = old.size()}};
      ReplaceFile(name, BytesOf("caption " + old),
                  {.recorder = &batch, .kept = kept, .stateDirectory = state, .fileSystem = &quick});
    }
  }
  EXPECT_EQ(ReadAll(*names.begin()), "caption caption content of jpeg");
  journal.Undo();
  EXPECT_EQ(Snapshot(), before);
}

/// Has another program come by while an undo acts.
class MeddlingTrash final : public Trash {
 public:
  MeddlingTrash(Trash& below, std::function<void()> meddle) : below_(below), meddle_(std::move(meddle)) {}
  void Put(const std::string& path) override {
    meddle_();
    below_.Put(path);
  }
  std::vector<TrashedFile> Find(const std::string& path) override { return below_.Find(path); }

 private:
  Trash& below_;
  std::function<void()> meddle_;
};

TEST_F(EditJournalTest, LeavesAFileAloneThatChangesWhileOthersAreTakenBack) {
  Prepare();
  const auto path = dir / "images/jpeg";
  MeddlingTrash meddling(trash, [&] { dir.Write("images/jpeg", "caption content of jpeg, and more"); });
  EditJournal journal({.trash = meddling, .clock = clock, .stateDirectory = state, .fileSystem = quick});
  {
    EditBatch batch(journal, "Caption");
    const std::vector<KeptStretch> kept{{.newOffset = 8, .size = 15}};
    ReplaceFile(path, BytesOf("caption content of jpeg"), {.recorder = &batch, .kept = kept, .fileSystem = &quick});
    ReplaceFile(dir / "images/copy", BytesOf("a copy"), {.recorder = &batch, .fileSystem = &quick});
  }
  EXPECT_THROW(journal.Undo(), UserError);
  EXPECT_EQ(ReadAll(path), "caption content of jpeg, and more");
}

TEST_F(EditJournalTest, SaysWhatCannotBeUndone) {
  Prepare();
  const auto big = dir.Write("images/big", "");
  fs::resize_file(big, kMaxUndoBytes + 1);
  auto journal = Journal();
  {
    EditBatch batch(journal, "Rotate");
    ReplaceFile(dir / "images/a", BytesOf("new"), {.recorder = &batch, .fileSystem = &quick});
    ReplaceFile(big, BytesOf("new"), {.recorder = &batch, .fileSystem = &quick});
    EXPECT_FALSE(batch.Undoable());
  }
  EditBatch(journal, "Delete").WillLose(dir / "images/b", "deleted for good");
  EXPECT_EQ(journal.List().size(), 2U);
  EXPECT_THROW(journal.Undo(), UserError);
  EXPECT_EQ(journal.Undo().notUndoable, std::vector{big});
  EXPECT_EQ(ReadAll(dir / "images/a"), "content of a");
  EXPECT_EQ(ReadAll(big), "new");
}

TEST_F(EditJournalTest, KeepsNothingOfWhatTheNewFileRepeats) {
  const auto put = [](std::uint64_t at) { return Patch{at, BytesOf("oo"), BytesOf("xy")}; };
  auto journal = Journal();
  for (const bool moved : {true, false}) {
    const std::string old(moved ? kMaxUndoBytes + 1 : 3 * kInPlacePage, 'o');
    const auto path = dir.Write("images/big", old);
    {
      EditBatch batch(journal, "Caption");
      const std::vector<KeptStretch> kept{{.newOffset = 7, .size = old.size()}};
      const PatchSet inTwoPages{.fileSize = old.size(), .patches = {put(2 * kInPlacePage), put(7)}};
      if (moved) ReplaceFile(path, BytesOf("caption" + old), {.recorder = &batch, .kept = kept, .fileSystem = &quick});
      if (!moved) ApplyPatches(path, inTwoPages, {.recorder = &batch, .fileSystem = &quick});
      EXPECT_TRUE(batch.Undoable());
    }
    EXPECT_NE(fs::file_size(path) == old.size(), moved);
    const auto store = StorePathOf(LogPath(JournalDirectory(state), journal.List().at(0).id));
    EXPECT_EQ(ReadAll(store), moved ? std::nullopt : std::optional<std::string>("oooo"));
    journal.Undo();
    EXPECT_TRUE(ReadAll(path) == old) << moved;
  }
}

TEST_F(EditJournalTest, LeavesABatchInProgressAlone) {
  Prepare();
  auto journal = Journal();
  EditBatch batch(journal, "Rename");
  batch.WillRename(dir / "images/a", dir / "images/c");
  EXPECT_THROW(Journal().Undo(), UserError);
  batch.Commit();
  EXPECT_TRUE(Journal().Undo().notUndoable.empty());  // the rename never came
}

TEST_F(EditJournalTest, ReadsWhatIsWholeOfADamagedFile) {
  Prepare();
  EditEverything(quick);
  const auto path = LogPath(JournalDirectory(state), "0000000001");
  const auto whole = ReadAll(path).value();
  for (std::size_t length = 0; length < whole.size(); length += 7) {
    dir.Write("state/journal/0000000001.edits", whole.substr(0, length) + "garbage");
    const auto entries = Journal().List();
    if (!entries.empty()) {
      EXPECT_LE(entries[0].files.size(), 8U);
    }
  }
}

}  // namespace
}  // namespace ml::platform
