#include "catalogue/rename_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>

#include "catalogue/thumbnail_thread.h"
#include "platform/edit_journal.h"
#include "platform/errors.h"
#include "support/fake_trash.h"
#include "support/fakes.h"
#include "support/fault_sweep.h"
#include "support/temp_dir.h"

namespace ml::catalogue {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using Files = std::map<std::string, std::string>;  // name to content

/// A directory of images, each file holding its first name.
class RenameTest : public testing::Test {
 protected:
  void Fill(const Names& names) {
    fs::remove_all(dir_ / "images");
    for (const auto& name : names) dir_.Write("images/" + name, name);
  }
  std::string At(const std::string& name) const { return dir_ / ("images/" + name); }
  Names At(const Names& names) const {
    Names paths;
    for (const auto& name : names) paths.push_back(At(name));
    return paths;
  }
  Files Now() const {
    Files files;
    for (const auto& entry : fs::directory_iterator(dir_ / "images")) {
      files[entry.path().filename()] = *test::ReadAll(entry.path());
    }
    return files;
  }
  static Files Untouched(const Names& names) {
    Files files;
    for (const auto& name : names) files[name] = name;
    return files;
  }
  RenameTools Tools(platform::EditBatch* batch = nullptr) {
    return {.companions = companions_, .trash = trash_, .batch = batch};
  }
  std::string Refusal(const Names& from, const Names& to, const RenameTools& tools) {
    try {
      RenameFiles(At(from), At(to), CaseMode::Unchanged, tools);
    } catch (const platform::UserError& error) {
      return error.what();
    }
    return {};
  }

  const test::TempDir dir_;
  imagefiles::CompanionFinder companions_{{}};
  test::FakeTrash trash_{dir_ / "trash"};
  test::FakeClock clock_;
  platform::EditJournal journal_{{.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state"}};
};

TEST_F(RenameTest, CancellingTakesBackWhatWasDone) {
  const Names there = {"a.crw", "a.txt", "b.crw", "c.jpg"};
  Fill(there);
  platform::EditBatch batch(journal_, "Rename");
  std::stop_source stop;
  auto tools = Tools(&batch);
  tools.stop = stop.get_token();
  std::vector<std::size_t> told;
  tools.progress = [&](std::size_t done, std::size_t count) {
    EXPECT_GT(count, 3U);
    told.push_back(done);
    if (done == 2) stop.request_stop();
  };
  EXPECT_THROW(RenameFiles(At(Names{"a.crw", "b.crw", "c.jpg"}), At(Names{"b.crw", "a.crw", "d.jpg"}),
                           CaseMode::Unchanged, tools),
               platform::Cancelled);
  EXPECT_EQ(told, (std::vector<std::size_t>{0, 1, 2, 2, 1, 0}));
  EXPECT_EQ(Now(), Untouched(there));
  batch.Commit();
  EXPECT_TRUE(journal_.List().empty()) << "there is nothing to undo";

  std::stop_source again;
  auto disturbed = Tools();
  disturbed.stop = again.get_token();
  disturbed.renamed = [&](const std::string&, const std::string& to) {
    if (to != At("d.jpg")) return;
    dir_.Write("images/c.jpg", "another program's");
    again.request_stop();
  };
  EXPECT_NE(Refusal({"c.jpg", "a.crw"}, {"d.jpg", "e.crw"}, disturbed), "") << "not merely cancelled: a name is taken";
}

TEST_F(RenameTest, ChainsSwapsAndCompanionsArriveAndUndoBringsAllBack) {
  struct Case {
    Names there, from, to;
    Files after;
  };
  const Case cases[] = {
      {{"a.jpg", "b.jpg"}, {"a.jpg", "b.jpg"}, {"b.jpg", "c.jpg"}, {{"b.jpg", "a.jpg"}, {"c.jpg", "b.jpg"}}},
      {{"a.jpg", "b.jpg"}, {"a.jpg", "b.jpg"}, {"b.jpg", "a.jpg"}, {{"b.jpg", "a.jpg"}, {"a.jpg", "b.jpg"}}},
      // The temporary name is taken, and differs in case from a destination.
      {{"a.jpg", "a@.jpg", "B.jpg"},
       {"a.jpg", "B.jpg"},
       {"b.jpg", "A.jpg"},
       {{"b.jpg", "a.jpg"}, {"A.jpg", "B.jpg"}, {"a@.jpg", "a@.jpg"}}},
      {{"a.crw", "a.THM", "a.txt", "b.crw", "b.thm", "b.wav"},
       {"a.crw", "b.crw"},
       {"b.crw", "a.crw"},
       {{"b.crw", "a.crw"},
        {"b.THM", "a.THM"},
        {"b.txt", "a.txt"},
        {"a.crw", "b.crw"},
        {"a.thm", "b.thm"},
        {"a.wav", "b.wav"}}},
      // Not the image but its note is in the way, and goes first with its own image.
      {{"a.crw", "a.txt", "b.jpg", "b.txt"},
       {"a.crw", "b.jpg"},
       {"b.crw", "c.jpg"},
       {{"b.crw", "a.crw"}, {"b.txt", "a.txt"}, {"c.jpg", "b.jpg"}, {"c.txt", "b.txt"}}},
      // A stranger's note is displaced; a ".thm" beside a JPEG is none of its companions.
      {{"a.jpg", "a.thm", "a.txt", "b.txt"},
       {"a.jpg"},
       {"b.jpg"},
       {{"b.jpg", "a.jpg"}, {"b.txt", "a.txt"}, {"a.thm", "a.thm"}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.from.front() + " to " + c.to.front());
    Fill(c.there);
    {
      platform::EditBatch batch(journal_, "Rename");
      RenameFiles(At(c.from), At(c.to), CaseMode::Unchanged, Tools(&batch));
      EXPECT_EQ(batch.Failure(), std::nullopt);
    }
    EXPECT_EQ(Now(), c.after);
    journal_.Undo();
    EXPECT_EQ(Now(), Untouched(c.there));
  }
}

TEST_F(RenameTest, CaseModesTouchTheNameAlone) {
  struct Case {
    CaseMode mode;
    Names after;
  };
  for (const auto& c :
       {Case{CaseMode::Unchanged, {"Neu.CRW", "Neu.Txt"}}, Case{CaseMode::LowerExtension, {"Neu.crw", "Neu.txt"}},
        Case{CaseMode::Lower, {"neu.crw", "neu.txt"}}, Case{CaseMode::Upper, {"NEU.CRW", "NEU.TXT"}}}) {
    Fill({"Old.CRW", "Old.Txt"});
    EXPECT_EQ(RenameOne(At("Old.CRW"), At("Neu.jpg"), c.mode, Tools()), At(c.after[0]));
    EXPECT_EQ(Now(), (Files{{c.after[0], "Old.CRW"}, {c.after[1], "Old.Txt"}}));
  }
  EXPECT_EQ(RenameOne(At("NEU.CRW"), At("NEU.CRW"), CaseMode::Lower, Tools()), At("neu.crw")) << "case only";
}

TEST_F(RenameTest, WhatStandsAtTheNewNameGoesToTheTrashOrTheRenameIsRefused) {
  Fill({"a.jpg", "A.jpg", "c.jpg"});
  EXPECT_EQ(RenameOne(At("a.jpg"), At("A.jpg"), CaseMode::Unchanged, Tools()), At("A.jpg"));
  EXPECT_EQ(trash_.Find(At("A.jpg")).size(), 1U) << "another file, although only the case differs";
  fs::create_hard_link(At("c.jpg"), At("d.jpg"));
  RenameOne(At("c.jpg"), At("d.jpg"), CaseMode::Unchanged, Tools());
  EXPECT_EQ(Now(), (Files{{"A.jpg", "a.jpg"}, {"d.jpg", "c.jpg"}})) << "two names of one file";

  fs::create_directory(At("dir.jpg"));
  EXPECT_EQ(Refusal({"d.jpg"}, {"dir.jpg"}, Tools()),
            "Error deleting: " + At("dir.jpg") + "\nwhen trying to rename: " + At("d.jpg") + "\nCause: accessDenied");
  fs::remove(At("dir.jpg"));
  trash_.broken = true;
  EXPECT_EQ(Refusal({"A.jpg"}, {"d.jpg"}, Tools()),
            "Error deleting: " + At("d.jpg") + "\nwhen trying to rename: " + At("A.jpg") + "\nCause: generic");
  EXPECT_EQ(Refusal({"x.jpg"}, {"y.jpg"}, Tools()), "Error renaming: " + At("x.jpg") + "\nto: " + At("y.jpg"));
  EXPECT_EQ(Refusal({"A.jpg"}, {"sub/y.jpg"}, Tools()),
            "Source and destination directories must be the same:\n" + At("A.jpg") + "\n" + At("sub/y.jpg"));
  EXPECT_EQ(Refusal({"A.jpg"}, {}, Tools()),
            "CThumbnailThread::RenameFiles() srcFiles and destFiles are different sizes");
  EXPECT_EQ(Now(), (Files{{"A.jpg", "a.jpg"}, {"d.jpg", "c.jpg"}}));
}

/// A swap and a chain with companions, failing or killed at every call: nothing is renamed, or all is, or undo knows.
TEST_F(RenameTest, WhateverFailsTheOldNamesComeBack) {
  const Names names{"a.crw", "a.thm", "a.txt", "b.crw", "b.wav", "c.jpg"};
  const Files arrived{{"b.crw", "a.crw"}, {"b.thm", "a.thm"}, {"b.txt", "a.txt"},
                      {"a.crw", "b.crw"}, {"a.wav", "b.wav"}, {"d.jpg", "c.jpg"}};
  const auto act = [&](platform::FileSystem& fileSystem) {
    imagefiles::CompanionFinder companions{{}};
    platform::EditJournal journal{
        {.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state", .fileSystem = fileSystem}};
    platform::EditBatch batch(journal, "Rename");
    RenameFiles(At(Names{"a.crw", "b.crw", "c.jpg"}), At(Names{"b.crw", "a.crw", "d.jpg"}), CaseMode::Unchanged,
                {.companions = companions, .trash = trash_, .batch = &batch, .fileSystem = fileSystem});
  };
  const auto prepare = [&] {
    Fill(names);
    fs::remove_all(dir_ / "state");
  };
  for (const auto fault : test::kFaults) {
    const bool oneCall = fault == test::Fault::Eio || fault == test::Fault::Enospc;
    const auto verify = [&](test::Outcome outcome) {
      const auto now = Now();
      EXPECT_EQ(now.size(), names.size());
      for (const auto& [name, content] : now) {
        const auto stem = fs::path(name).stem().string(), old = fs::path(content).stem().string();
        const auto wanted = old == "a" ? "b" : old == "b" ? "a" : "d";
        EXPECT_TRUE(stem == old || stem == old + "@" || stem == wanted) << content << " is " << name;
      }
      if (outcome == test::Outcome::Done) {
        EXPECT_EQ(now, arrived);
        return;
      }
      if (outcome == test::Outcome::Refused && oneCall) {
        EXPECT_EQ(now, Untouched(names));
      }
      if (now != Untouched(names)) journal_.Undo();
      EXPECT_EQ(Now(), Untouched(names));
    };
    EXPECT_GT(test::SweepFaults(fault, prepare, act, verify), fault == test::Fault::ShortWrite ? 1 : 20);
  }
}

TEST_F(RenameTest, AnUndoThatWasCutOffGoesOn) {
  const Names names{"a.crw", "a.thm", "b.crw", "b.thm", "c.jpg"};
  const auto prepare = [&] {
    Fill(names);
    fs::remove_all(dir_ / "state");
    platform::EditBatch batch(journal_, "Rename");
    RenameFiles(At(Names{"a.crw", "b.crw", "c.jpg"}), At(Names{"b.crw", "a.crw", "d.jpg"}), CaseMode::Unchanged,
                Tools(&batch));
  };
  const auto act = [&](platform::FileSystem& fileSystem) {
    platform::EditJournal(
        {.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state", .fileSystem = fileSystem})
        .Undo();
  };
  const auto verify = [&](test::Outcome) {
    if (!journal_.List().empty()) journal_.Undo();
    EXPECT_EQ(Now(), Untouched(names));
  };
  for (const auto fault : {test::Fault::Eio, test::Fault::Kill}) {
    EXPECT_GT(test::SweepFaults(fault, prepare, act, verify), 20);
  }
}

TEST_F(RenameTest, AThousandImagesWithCompanionsArriveAndComeBack) {
  constexpr int kImages = 1000;
  const auto stem = [](int i) { return "IMG_" + std::to_string(1000 + i); };
  Names all, from, to;
  for (int i = 0; i < kImages; ++i) {
    for (const char* extension : {".crw", ".thm", ".txt"}) all.push_back(stem(i) + extension);
    from.push_back(stem(i) + ".crw");
    const int target = i < kImages - 2 ? i + 1 : (i == kImages - 2 ? 0 : kImages - 1);  // a ring of all but the last
    to.push_back((i == kImages - 1 ? std::string("Last") : stem(target)) + ".crw");
  }
  std::swap(to[10], to[500]);
  Fill(all);
  {
    platform::EditBatch batch(journal_, "Rename");
    RenameFiles(At(from), At(to), CaseMode::Unchanged, Tools(&batch));
    EXPECT_TRUE(batch.Undoable());
  }
  const auto now = Now();
  EXPECT_EQ(now.size(), all.size());
  for (std::size_t i = 0; i < from.size(); ++i) {
    for (const char* extension : {".crw", ".thm", ".txt"}) {
      const auto arrived = fs::path(to[i]).replace_extension(extension).string();
      EXPECT_EQ(now.at(arrived), fs::path(from[i]).replace_extension(extension).string());
    }
  }
  journal_.Undo();
  EXPECT_EQ(Now(), Untouched(all));
}

TEST_F(RenameTest, WhatCannotBeDoneWholeIsNotBegun) {
  Fill({"a.jpg", "a.txt", "b.jpg"});
  platform::EditJournal nowhere{
      {.trash = trash_, .clock = clock_, .stateDirectory = dir_.Write("file", "") + "/state"}};
  platform::EditBatch batch(nowhere, "Rename");
  EXPECT_NE(Refusal({"a.jpg", "b.jpg"}, {"c.jpg", "d.jpg"}, Tools(&batch)), "") << "no place for the plan";
  EXPECT_NE(Refusal({"a.jpg", "gone.jpg"}, {"c.jpg", "d.jpg"}, Tools()), "");
  EXPECT_EQ(Now(), Untouched({"a.jpg", "a.txt", "b.jpg"}));
  {
    platform::EditBatch failed(journal_, "Rename");
    RenameTools tools = Tools(&failed);
    tools.renamed = [&](const std::string&, const std::string& to) {
      if (to == At("c.txt")) fs::remove(At("b.jpg"));  // another program's doing, in mid batch
    };
    EXPECT_NE(Refusal({"a.jpg", "b.jpg"}, {"c.jpg", "d.jpg"}, tools), "");
  }
  EXPECT_EQ(Now(), Untouched({"a.jpg", "a.txt"}));
  EXPECT_TRUE(journal_.List().empty()) << "nothing happened that could be undone";
}

TEST_F(RenameTest, WhatWasDisplacedBeforeAFailureComesBackByUndo) {
  const Names names{"a.crw", "a.thm", "a.txt", "b.crw", "b.thm", "b.txt"};
  const auto act = [&](platform::FileSystem& fileSystem) {
    platform::EditBatch batch(journal_, "Rename");
    RenameFiles(At(Names{"a.crw"}), At(Names{"b.crw"}), CaseMode::Unchanged,
                {.companions = companions_, .trash = trash_, .batch = &batch, .fileSystem = fileSystem});
  };
  const auto verify = [&](test::Outcome outcome) {
    EXPECT_EQ(Now().size(), outcome == test::Outcome::Done ? 3U : Now().size());
    if (Now() != Untouched(names)) journal_.Undo();
    EXPECT_EQ(Now(), Untouched(names));
  };
  EXPECT_GT(test::SweepFaults(
                test::Fault::Eio, [&] { Fill(names); }, act, verify),
            10);
}

TEST_F(RenameTest, TheWorkersEntriesFollowAndItStaysPaused) {
  Fill({"a.jpg", "b.jpg"});
  ImageList list;
  std::atomic<int> made = 0;
  CThumbnailThread worker(
      list,
      [&](const std::string& path, int) {
        ++made;
        ImageItem item;
        item.path = path;
        return item;
      },
      [](int) {}, 1);
  worker.LoadList(At(Names{"a.jpg", "b.jpg"}));
  while (worker.FinishedCount() < 2) std::this_thread::yield();
  list.currentPath = At("a.jpg");
  list.SetTag(0, true);
  worker.RenameFiles(list.files, At(Names{"b.jpg", "a.jpg"}), CaseMode::Unchanged, Tools());
  EXPECT_EQ(list.files, At(Names{"b.jpg", "a.jpg"}));
  EXPECT_EQ(list.currentPath, At("b.jpg"));
  EXPECT_EQ(worker.Item(0)->path, At("b.jpg"));
  EXPECT_EQ(list.TaggedPaths(), At(Names{"b.jpg"}));
  worker.InvalidateEntries({});  // resumes
  worker.RenameFiles(At(Names{"b.jpg"}), At(Names{"c.jpg"}), CaseMode::Unchanged, Tools(),
                     [&](RenameTools&, const std::function<void()>& work) {
                       std::thread(work).join();
                       EXPECT_EQ(list.files, At(Names{"b.jpg", "a.jpg"})) << "the list is not that thread's";
                     });
  worker.Pause();
  EXPECT_EQ(made, 2);
  EXPECT_EQ(list.files, At(Names{"c.jpg", "a.jpg"}));
}

}  // namespace
}  // namespace ml::catalogue
