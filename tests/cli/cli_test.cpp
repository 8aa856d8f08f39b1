#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "cli/cli_run.h"
#include "support/child_process.h"
#include "support/sample_photo.h"

namespace ml::test {
namespace {

class Cli : public CliTest {
 protected:
  static std::vector<std::string> Names(const json& list) {
    std::vector<std::string> names;
    for (const auto& file : list["files"]) {
      names.push_back(std::filesystem::path(file["path"].get<std::string>()).filename());
    }
    return names;
  }
  void WriteImages(const std::vector<std::string>& names) {
    for (const auto& name : names) dir.Write(name, "x");
  }
};

TEST_F(Cli, WrongUsageAndFailuresHaveTheirExitCodes) {
  EXPECT_EQ(run({}).exitCode, 2);
  EXPECT_EQ(run({"list"}).exitCode, 2);
  EXPECT_EQ(run({"list", dir.Path(), "--sort", "size"}).exitCode, 2);
  EXPECT_EQ(run({"preview", "x.jpg", "--box", "10", "--out", dir.Path()}).exitCode, 2);
  EXPECT_EQ(run({"list", dir.Path(), "--setting", "Nonsense=1"}).exitCode, 2);
  EXPECT_EQ(run({"--help"}).exitCode, 0);
  EXPECT_EQ(run.PrintTo("/dev/full", {"settings"}).exitCode, 1);
  const auto missing = run({"list", dir / "gone"});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.errors.find(dir / "gone"), std::string::npos);
  EXPECT_EQ(run({"list", dir.Write("a.txt", "")}).exitCode, 1);
}

TEST_F(Cli, WhatCannotBeListedIsTold) {
  WriteImages({"a.jpg", ".b.jpg", "line\nbreak.jpg"});
  std::filesystem::create_directory(dir / "d.jpg");
  ASSERT_EQ(::mkfifo((dir / "p.jpg").c_str(), 0600), 0);
  for (const auto* name : {".b.jpg", "p.jpg", "d.jpg/x.jpg"}) {
    const auto result = run({"list", dir / "a.jpg", dir / name});
    EXPECT_EQ(result.exitCode, 1) << name;
    EXPECT_NE(result.errors.find(dir / name), std::string::npos) << result.errors;
  }
  EXPECT_EQ(Json({"list", dir / "a.jpg", dir / ".b.jpg", "--hidden"})["count"], 2);
  EXPECT_EQ(Json({"list", dir.Path(), "--setting", "SortMethod=99"})["sortMethod"], "alphabetical");
  EXPECT_EQ(Json({"tags", dir.Path(), "--add", "line\nbreak.jpg", "a.jpg"}, 1)["taggedCount"], 1);
  const auto unreadable = [&] {
    ::chmod(dir.Path().c_str(), 0);
    return run({"list", dir.Path()}).exitCode == 1;
  };
  ::chown(dir.Path().c_str(), 65534, 65534);
  EXPECT_TRUE(RunAsNobody(unreadable));
  ::chmod(dir.Path().c_str(), 0700);
}

TEST_F(Cli, ListTellsOrderTagsAndCompanions) {
  WriteImages({"x10.jpg", "x9.JPG", "y.crw", "y.thm", "x9.wav", "notes.txt", ".x1.jpg"});
  dir.Write("tagged_files.txt", "X9.jpg\r\n");
  const auto list = Json({"list", dir.Path(), "--sort", "numeric"});
  EXPECT_EQ(Names(list), (std::vector<std::string>{"x9.JPG", "x10.jpg", "y.crw"}));
  EXPECT_EQ(list["directory"], dir.Path());
  EXPECT_EQ(list["sortMethod"], "numeric");
  EXPECT_EQ(list["count"], 3);
  EXPECT_EQ(list["taggedCount"], 1);
  EXPECT_EQ(list["files"][0]["tagged"], true);
  EXPECT_EQ(list["files"][0]["hasSound"], true);
  EXPECT_EQ(list["files"][1]["hasViewingJpeg"], false);
  EXPECT_EQ(Names(Json({"list", dir.Path(), "--sort", "numeric", "--reverse"})),
            (std::vector<std::string>{"y.crw", "x10.jpg", "x9.JPG"}));
  EXPECT_EQ(Json({"list", dir.Path(), "--hidden"})["count"], 4);
  EXPECT_EQ(FilesIn(dir.Path()).size(), 8U) << "looking wrote something";
}

TEST_F(Cli, ListTakesFilesAsGivenAndShowsBytesThatAreNotUtf8) {
  const auto file = dir.Write("\xE4.jpg", "x");
  const auto list = Json({"list", file, dir / "gone.jpg"}, 1);
  ASSERT_EQ(list["count"], 1);
  EXPECT_EQ(list["files"][0]["path"], dir / "\u00E4.jpg");
  EXPECT_TRUE(list["files"][0]["pathHex"].get<std::string>().ends_with("E42E6A7067"));
}

TEST_F(Cli, NamesCannotUpsetATerminal) {
  dir.Write("red\033[31m\xC2\x9B.jpg", "x");
  const auto result = run({"list", dir.Path()});
  EXPECT_NE(result.output.find("red?[31m?.jpg"), std::string::npos) << result.output;
}

TEST_F(Cli, TagsAreKeptInTheDirectory) {
  WriteImages({"a.jpg", "b.jpg", "c.crw"});
  EXPECT_EQ(Json({"tags", dir.Path(), "--add", "b.jpg", "C.CRW", "--dry-run"})["taggedCount"], 2);
  EXPECT_FALSE(ReadAll(dir / "tagged_files.txt"));
  EXPECT_EQ(Json({"tags", dir.Path(), "--add", "b.jpg", "C.CRW", "--save", dir / "my.tag"})["taggedCount"], 2);
  EXPECT_EQ(ReadAll(dir / "tagged_files.txt"), "b.jpg\r\nc.crw\r\n");
  EXPECT_EQ(run({"tags", dir.Path(), "--save", dir / "my.tag"}).exitCode, 1) << "replaced a file unasked";
  EXPECT_EQ(Json({"tags", dir.Path(), "--remove", "b.jpg"})["taggedCount"], 1);
  EXPECT_EQ(Json({"tags", dir.Path(), "--clear"})["taggedCount"], 0);
  EXPECT_FALSE(ReadAll(dir / "tagged_files.txt"));
  EXPECT_EQ(Json({"tags", dir.Path(), "--load", dir / "my.tag"})["taggedCount"], 2);
  EXPECT_EQ(Json({"tags", dir.Path(), "--add", "zzz.jpg"}, 1)["taggedCount"], 2);
  EXPECT_EQ(run({"tags", dir.Path(), "--save", dir / "no/directory.tag"}).exitCode, 1);
  EXPECT_EQ(run({"tags", dir / "a.jpg", "--add", "a.jpg"}).exitCode, 1) << "took a file for a directory";
  EXPECT_FALSE(ReadAll(dir / "marrowlantern.dat")) << "tags wrote the order file";
}

TEST_F(Cli, OrderIsKeptInTheDirectory) {
  WriteImages({"a.jpg", "b.jpg", "c.jpg"});
  const auto custom = Json({"order", dir.Path(), "--custom", "c.jpg", "a.jpg"});
  EXPECT_EQ(custom["sortMethod"], "custom");
  EXPECT_EQ(Names(Json({"list", dir.Path()})), (std::vector<std::string>{"c.jpg", "a.jpg", "b.jpg"}));
  EXPECT_EQ(Json({"list", dir.Path(), "--reverse"})["reverse"], false);
  EXPECT_EQ(Names(Json({"list", dir.Path(), "--sort", "alphabetical"})),
            (std::vector<std::string>{"a.jpg", "b.jpg", "c.jpg"}));
  EXPECT_EQ(Names(Json({"order", dir.Path(), "--sort", "alphabetical", "--reverse"})),
            (std::vector<std::string>{"c.jpg", "b.jpg", "a.jpg"}));
  EXPECT_EQ(Json({"list", dir.Path()})["reverse"], true);
  EXPECT_EQ(Names(Json({"list", dir.Path(), "--sort", "custom"})),
            (std::vector<std::string>{"c.jpg", "a.jpg", "b.jpg"}))
      << "the custom order was forgotten";
  const auto before = ReadAll(dir / "marrowlantern.dat");
  for (const auto* nothing : {"gone.dat", "a.jpg"}) {
    EXPECT_EQ(run({"order", dir.Path(), "--load", dir / nothing}).exitCode, 1) << nothing;
  }
  EXPECT_EQ(run({"order", dir.Path(), "--save", dir / "no/directory.dat"}).exitCode, 1);
  EXPECT_EQ(ReadAll(dir / "marrowlantern.dat"), before);
}

TEST_F(Cli, ListSortsByTheTimeOfTheShot) {
  dir.Write("a.jpg", MakePhoto({.width = 16, .height = 16, .dateTime = "2003:05:17 10:11:13"}));
  dir.Write("b.jpg", MakePhoto({.width = 16, .height = 16, .dateTime = "2003:05:17 10:11:12"}));
  dir.Write("c.jpg", "no date but the file's");
  EXPECT_EQ(Names(Json({"list", dir.Path(), "--sort", "timestamp"})),
            (std::vector<std::string>{"b.jpg", "a.jpg", "c.jpg"}));
}

TEST_F(Cli, SettingsAreShownOverriddenAndKept) {
  const auto all = Json({"settings"});
  EXPECT_EQ(all.size(), 338U);
  EXPECT_EQ(Json({"settings", "--get", "SlideshowInterval"}),
            json::parse(R"([{"key": "SlideshowInterval", "type": "dword", "default": 4, "value": 4}])"));
  EXPECT_EQ(Json({"settings", "--get", "RawGamma", "--setting", "RawGamma=2.5"})[0]["value"], 2.5);
  EXPECT_FALSE(ReadAll(run.SettingsFile()));
  EXPECT_EQ(run({"settings", "--put", "Wraparound=1", "--dry-run"}).exitCode, 0);
  EXPECT_FALSE(ReadAll(run.SettingsFile()));
  Json({"settings", "--put", "Wraparound=1", "--setting", "RawGamma=2.5"});
  EXPECT_EQ(Json({"settings", "--get", "Wraparound", "RawGamma"})[0]["value"], 1.0);
  EXPECT_EQ(Json({"settings", "--get", "Wraparound", "--no-settings"})[0]["value"], 0);
  EXPECT_EQ(run({"settings", "--put", "Wraparound=maybe"}).exitCode, 2);
  EXPECT_EQ(run({"settings", "--get", "Nonsense"}).exitCode, 2);
  EXPECT_EQ(Json({"settings", "--get", "Wraparound"})[0]["value"], 1);
}

}  // namespace
}  // namespace ml::test
