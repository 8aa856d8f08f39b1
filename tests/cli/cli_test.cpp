#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/cli_run.h"
#include "support/child_process.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::test {
namespace {

using nlohmann::json;

class Cli : public testing::Test {
 protected:
  CliRunner run;
  TempDir dir;

  json Json(std::vector<std::string> arguments, int exitCode = 0) {
    arguments.push_back("--json");
    const auto result = run(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << result.errors;
    return json::parse(result.output);
  }
  static std::vector<std::string> Names(const json& list) {
    std::vector<std::string> names;
    for (const auto& file : list["files"]) {
      names.push_back(std::filesystem::path(file["path"].get<std::string>()).filename());
    }
    return names;
  }
  static std::vector<std::string> FilesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
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

TEST_F(Cli, IptcIsShownAndSaved) {
  const auto block = IptcBlock({{25, "\xE4"}, {120, "A caption"}});
  const auto resources = ResourceSegment(ImageResources({{1028, block}}));
  const auto photo = dir.Write("a.jpg", InsertSegments(MakePhoto({.width = 60, .height = 40}), resources));
  const auto file = dir / "a.ipt";
  const auto expected = json::parse(
      R"([{"record": 2, "dataset": 25, "value": "\u00e4"}, {"record": 2, "dataset": 120, "value": "A caption"}])");
  EXPECT_EQ(Json({"iptc", photo, "--save", file, "--dry-run"})[0]["iptc"], expected);
  EXPECT_FALSE(ReadAll(file));
  EXPECT_EQ(Json({"iptc", photo, "--save", file})[0]["ok"], true);
  EXPECT_EQ(Json({"iptc", file})[0]["iptc"], expected);
  EXPECT_EQ(ReadAll(file)->substr(7), block);
  EXPECT_EQ(Json({"info", photo})[0]["iptc"], expected);
  const auto again = Json({"iptc", photo, "--save", file}, 1);
  EXPECT_EQ(again[0]["ok"], false);
  EXPECT_NE(again[0]["message"], "");
  EXPECT_EQ(run({"iptc", photo, "--save", file, "--overwrite"}).exitCode, 0);
  EXPECT_EQ(run({"iptc", photo, "--save", photo, "--overwrite"}).exitCode, 1) << "replaced the image";
  EXPECT_EQ(run({"iptc", photo, file, "--save", dir / "b.ipt"}).exitCode, 2);
  EXPECT_EQ(Json({"iptc", dir / "gone.jpg", photo}, 1)[1]["ok"], true);
}

TEST_F(Cli, IptcIsSetMergedAndCleared) {
  const auto photo = dir.Write("a.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto other = dir.Write("b.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto text = dir.Write("c.txt", "text");
  const auto original = ReadAll(photo);
  const auto values = [&](const std::string& path) {
    std::string all;
    const auto shown = Json({"iptc", path});
    for (const auto& item : shown[0]["iptc"]) {
      all += std::to_string(item["dataset"].get<int>()) + "=" + item["value"].get<std::string>() + ";";
    }
    return all;
  };
  const std::vector<std::string> set = {"iptc", photo, "--set", "caption=@model@", "--set", "25=a", "--set", "25=b"};
  auto dry = set;
  dry.push_back("--dry-run");
  EXPECT_EQ(Json(dry)[0]["iptc"].size(), 3U);
  EXPECT_EQ(ReadAll(photo), original);
  const auto done = Json(set);
  EXPECT_EQ(done[0]["ok"], true);
  EXPECT_EQ(values(photo), "120=Sample;25=a;25=b;");
  EXPECT_EQ(run(set).output, photo + ": unchanged\n");
  const auto file = dir / "a.ipt";
  Json({"iptc", photo, "--save", file});
  Json({"iptc", other, "--set", "keywords=c", "--set", "headline=old"});
  const auto merged =
      Json({"iptc", other, text, text, text, text, photo, "--merge", file, "--merge-keywords", "--leave-existing"}, 1);
  ASSERT_EQ(merged.size(), 6U) << "one for each file";
  EXPECT_EQ(values(other), "25=c;25=a;25=b;120=Sample;105=old;");
  EXPECT_EQ(merged[1]["ok"], false);
  Json({"iptc", other, "--merge", file, "--exif-timestamp"});
  EXPECT_TRUE(values(other).starts_with("55=20030517;60=101112"));
  EXPECT_EQ(values(other).find("25=c"), std::string::npos);
  Json({"iptc", photo, other, "--set", "25="});
  EXPECT_EQ(values(photo), "120=Sample;");
  EXPECT_EQ(Json({"iptc", photo, "--clear"})[0]["iptc"], json::array());
  EXPECT_EQ(ReadAll(photo), original) << "nothing is left behind";
  for (const auto& wrong : {std::vector<std::string>{"--set", "caption"},
                            {"--set", "999=x"},
                            {"--set", "15=abcd"},
                            {"--set", "55=2003"},
                            {"--merge-keywords"},
                            {"--merge", file, "--clear"},
                            {"--clear", "--save", dir / "b.ipt"}}) {
    std::vector<std::string> arguments = {"iptc", photo};
    arguments.insert(arguments.end(), wrong.begin(), wrong.end());
    EXPECT_EQ(run(arguments).exitCode, 2) << wrong.back();
  }
  EXPECT_EQ(ReadAll(photo), original);
}

TEST_F(Cli, CommentsAreShownAndSet) {
  const auto picture = dir.Write("a.png", EncodePng(PaintPlain(8, 8, 0)));
  const auto gif = dir.Write("b.gif", "GIF89a");
  const auto original = ReadAll(picture);
  EXPECT_EQ(Json({"comment", picture, "--set", "A text", "--dry-run"})[0]["comment"], "A text");
  EXPECT_EQ(ReadAll(picture), original);
  const auto set = Json({"comment", picture, gif, "--set", "A text"}, 1);
  EXPECT_EQ(set[0], (json{{"path", picture}, {"comment", "A text"}, {"ok", true}, {"message", ""}}));
  EXPECT_EQ(set[1]["ok"], false);
  EXPECT_EQ(run({"comment", picture}).output, "A text\n");
  EXPECT_EQ(Json({"comment", gif})[0]["comment"], "");
  EXPECT_EQ(Json({"comment", picture, "--set", ""})[0]["comment"], "");
  EXPECT_EQ(ReadAll(picture), original);
  EXPECT_EQ(Json({"comment", dir / "gone.jpg"}, 1)[0]["ok"], false);
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

TEST_F(Cli, ThumbAndPreviewWritePictures) {
  const auto photo = dir.Write("in/IMG_1.JPG", MakePhoto({.width = 600, .height = 400}));
  const auto broken = dir.Write("in/broken.jpg", "\xFF\xD8 no picture");
  const auto thumbs = Json({"thumb", photo, broken, "--size", "80", "--out", dir / "out"}, 1);
  ASSERT_EQ(thumbs.size(), 2U);
  EXPECT_EQ(thumbs[0]["output"], dir / "out/IMG_1.JPG.png");
  EXPECT_EQ(thumbs[0]["width"], 80);
  EXPECT_EQ(thumbs[0]["source"], "exif");
  EXPECT_EQ(thumbs[1]["output"], nullptr);
  EXPECT_EQ(ReadAll(dir / "out/IMG_1.JPG.png").value_or("").substr(0, 4), "\x89PNG");

  const auto preview = Json({"preview", photo, "--box", "300x300", "--grey", "--out", dir / "out", "--rename"});
  EXPECT_EQ(preview[0]["output"], dir / "out/IMG_1.JPG (2).png");
  EXPECT_EQ(preview[0]["width"], 300);
  EXPECT_EQ(preview[0]["height"], 200);
  EXPECT_EQ(preview[0]["source"], "full");
  EXPECT_EQ(run({"preview", photo, "--box", "300x300", "--out", dir / "out"}).exitCode, 1) << "overwrote unasked";
  EXPECT_EQ(run({"preview", photo, "--box", "300x300", "--out", dir / "out", "--skip"}).exitCode, 0);
  EXPECT_EQ(run({"thumb", photo, "--size", "80", "--out", dir / "dry", "--dry-run"}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(dir / "dry"));
}

TEST_F(Cli, PicturesOfOneRunDoNotTakeEachOthersPlace) {
  const auto wide = dir.Write("a/x.jpg", MakePhoto({.width = 60, .height = 40}));
  const auto high = dir.Write("b/x.jpg", MakePhoto({.width = 40, .height = 60}));
  const auto out = dir / "out";
  const std::vector<std::string> preview = {"preview", wide, high, "--box", "30x30", "--out", out};
  const auto with = [&](const std::string& option) {
    auto arguments = preview;
    arguments.push_back(option);
    return arguments;
  };
  EXPECT_EQ(Json(with("--dry-run"), 1)[1]["output"], nullptr);
  EXPECT_EQ(Json(with("--overwrite"), 1)[0]["output"], out + "/x.jpg.png");
  const auto first = ReadAll(out + "/x.jpg.png");
  EXPECT_EQ(Json(with("--skip"), 0)[1]["output"], nullptr);
  EXPECT_EQ(Json(with("--overwrite"), 1)[1]["output"], nullptr);
  EXPECT_EQ(ReadAll(out + "/x.jpg.png"), first);
  const auto renamed = Json(with("--rename"));
  EXPECT_EQ(renamed[0]["output"], out + "/x.jpg (2).png");
  EXPECT_EQ(renamed[1]["output"], out + "/x.jpg (3).png");
}

TEST_F(Cli, ThumbnailsComeInOrderAndGiveWayToEarlierOnesOnly) {
  std::vector<std::string> arguments = {"thumb", "--size", "20", "--out", dir / "out"}, given;
  for (int i = 0; i < 24; ++i) {
    // Every third file is broken, and its name is free for the next of that name.
    const auto name = std::to_string(i) + "/" + std::to_string(i / 6) + ".jpg";
    given.push_back(dir.Write(name, i % 3 == 0 ? "broken" : MakePhoto({.width = 60 + i, .height = 40})));
  }
  arguments.insert(arguments.end(), given.begin(), given.end());
  const auto thumbs = Json(arguments, 1);
  ASSERT_EQ(thumbs.size(), given.size());
  for (std::size_t i = 0; i < given.size(); ++i) {
    EXPECT_EQ(thumbs[i]["path"], given[i]);
    EXPECT_EQ(thumbs[i]["output"].is_null(), i % 6 != 1) << i;
  }
}

TEST_F(Cli, CancellingTellsWhatWasDone) {
  const auto photo = dir.Write("photo.jpg", MakePhoto({.width = 600, .height = 400}));
  std::vector<std::string> arguments = {"preview", "--box", "500x500", "--out", dir / "out", "--json"};
  for (int i = 0; i < 2000; ++i) {
    arguments.push_back(dir / (std::to_string(i) + ".jpg"));
    std::filesystem::create_symlink(photo, arguments.back());
  }
  const auto result = run.InterruptAt(dir / "out/0.jpg.png", arguments);
  EXPECT_EQ(result.exitCode, 130);
  const auto done = json::parse(result.output);
  EXPECT_LT(done.size(), 2000U);
  EXPECT_EQ(FilesIn(dir / "out").size(), done.size());
}

TEST_F(Cli, InfoTellsTheFieldsWithContent) {
  const auto photo = dir.Write("a.jpg", MakePhoto({.width = 64, .height = 48, .orientation = 6, .make = "M\xE4ker"}));
  const auto info = Json({"info", photo, dir / "gone.jpg"}, 1);
  ASSERT_EQ(info.size(), 2U);
  EXPECT_EQ(info[0]["path"], photo);
  EXPECT_EQ(info[0]["make"], "M\u00E4ker");
  EXPECT_EQ(info[0]["dateTime"], "2003:05:17 10:11:12");
  EXPECT_EQ(info[0]["shootingTime"], 1'053'159'072);
  EXPECT_EQ(info[0]["imageWidth"], 64);
  EXPECT_EQ(info[0]["exifInvalid"], false);
  EXPECT_EQ(info[0]["iptc"], json::array());
  for (const char* absent : {"comment", "isoShort", "focalLength", "hasIccProfile", "exifBlock", "userCommentPtr"}) {
    EXPECT_FALSE(info[0].contains(absent)) << absent;
  }
  EXPECT_EQ(info[1]["path"], dir / "gone.jpg");
  EXPECT_EQ(info[1]["exifInvalid"], false);
  EXPECT_TRUE(info[1].contains("message"));
  EXPECT_EQ(Json({"info", photo, "--setting", "UseJpegExifOrientation=1"})[0]["imageWidth"], 48);
  EXPECT_NE(run({"info", photo}).output.find("  imageWidth: 64\n"), std::string::npos);
}

TEST_F(Cli, TextsInAnyEncodingAreShownReadablyAndLeftAsTheyAre) {
  const std::pair<std::string, std::string> cases[] = {
      {"Gr\xC3\xBC\xC3\x9F", "Gr\u00FC\u00DF"},          // UTF-8
      {"Gr\xFC\xDF \x80 5", "Gr\u00FC\u00DF \u20AC 5"},  // Windows-1252
      {"\xC3\xBC \xFC", "\u00C3\u00BC \u00FC"},          // both: one encoding for the whole text
      {"a\x81 \xFF(", "a\uFFFD \u00FF("},                // neither
      {"cut \xE2\x82", "cut \u00E2\u201A"},
      {"half \xED\xA0\x80", "half \u00ED\u00A0\u20AC"},  // of a pair
  };
  for (const auto& [bytes, shown] : cases) {
    SCOPED_TRACE(shown);
    const auto resources = ResourceSegment(ImageResources({{1028, IptcBlock({{120, bytes}})}}));
    const auto content =
        InsertSegments(MakePhoto({.width = 16, .height = 16, .make = bytes}),
                       resources + XmpSegment(XmpPacket("", "<aux:SerialNumber>" + bytes + "</aux:SerialNumber>")));
    const auto photo = dir.Write("a.jpg", content);
    auto info = Json({"info", photo})[0];
    EXPECT_EQ(info["make"], shown);
    EXPECT_EQ(info["iptc"][0]["value"], shown);
    EXPECT_EQ(info["bodySerial"], shown);
    EXPECT_EQ(Json({"expand", "@IPTC_caption@", photo})[0]["text"], shown);
    EXPECT_EQ(run({"expand", "@IPTC_caption@", photo}).output, shown + "\n");
    EXPECT_EQ(ReadAll(photo), content);
  }
}

TEST_F(Cli, TextHasThreeForms) {
  const auto photo = dir.Write("a.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto text = [&](const std::string& form) {
    return Json({"text", photo, "--as", form})[0]["text"].get<std::string>();
  };
  EXPECT_TRUE(text("properties").starts_with("File: " + photo + "\nFile size: "));
  EXPECT_TRUE(text("summary").starts_with("2003:05:17 10:11:12\nFile size: "));
  EXPECT_EQ(text("short"), text("summary"));
  EXPECT_EQ(run({"text", photo}).output, text("properties") + "\n");
  EXPECT_EQ(run({"text", photo, "--as", "long"}).exitCode, 2);
}

TEST_F(Cli, ExpandFillsInTokensAndDescribesThem) {
  const auto photo = dir.Write("a1.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto expanded = Json({"expand", "@dir@ @file@ @year@ @model@ @nothing@", photo, dir / "gone.jpg"}, 1);
  ASSERT_EQ(expanded.size(), 2U);
  EXPECT_EQ(expanded[0], (json{{"path", photo}, {"text", dir.Path() + "/ a1.jpg 2003 Sample @nothing@"}}));
  EXPECT_EQ(expanded[1]["text"], dir.Path() + "/ gone.jpg   @nothing@");
  EXPECT_EQ(run({"expand", "@fileAsNumber@\n@width@\n", photo, photo}).output, "1\n64\n1\n64\n");
  EXPECT_EQ(Json({"expand", "@dir@", "some/a.jpg"}, 1)[0]["text"].get<std::string>().front(), '/');
  EXPECT_EQ(run({"expand", "@iso@ @x@", "--describe"}).output, "ISO @x@\n");
  EXPECT_EQ(Json({"expand", "@iso@", "--describe"}), (json{{{"text", "ISO"}}}));
  EXPECT_EQ(Json({"expand", "@iso@", "--describe", photo}), (json{{{"path", photo}, {"text", "ISO"}}}));
  EXPECT_EQ(run({"expand", "@iso@"}).exitCode, 2);
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
