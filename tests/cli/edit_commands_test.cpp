#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "cli/cli_run.h"
#include "support/camera_raw.h"
#include "support/colour_profiles.h"
#include "support/picture_tiff.h"
#include "support/sample_photo.h"

/// The commands that change images: what they tell, what they leave alone, and that undo brings all of it back.
namespace ml::test {
namespace {

/// Content, time and permissions of each file below a directory.
using Snapshot = std::map<std::string, std::tuple<std::string, std::int64_t, unsigned>>;

Snapshot Look(const std::string& directory) {
  Snapshot files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    struct stat status {};
    ::stat(entry.path().c_str(), &status);
    if (!S_ISREG(status.st_mode)) continue;
    const auto time = std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
    files[entry.path()] = {ReadAll(entry.path()).value_or(""), time, status.st_mode};
  }
  return files;
}

class EditCommands : public CliTest {
 protected:
  const std::string photo = dir.Write("in/a.jpg", MakePhoto({.width = 64, .height = 48, .orientation = 6}));
  const std::string later = dir.Write("in/b.jpg", MakePhoto({.width = 48, .height = 32, .orientation = 1}));

  json Info(const std::string& path) { return Json({"info", path})[0]; }
};

TEST_F(EditCommands, ChangeWhatTheyTellAndUndoBringsItBack) {
  const auto profile = dir.Write("in/p.icc", EncodeProfile({}));
  dir.Write("in/a.wav", "sound");
  const auto readOnly = dir.Write("in/c.jpg", MakePhoto({.width = 40, .height = 40, .orientation = 8}));
  ::chmod(readOnly.c_str(), 0444);
  const std::vector<std::vector<std::string>> commands = {
      {"rotate", "--left"},
      {"rotate", "--180"},
      {"rotate", "--auto"},
      {"adjust-time", "--seconds", "-3600"},
      {"adjust-time", "--seconds", "7", "--file-times"},
      {"timestamp", "--read-only"},
      {"thumbnail", "--regenerate"},
      {"embed-profile", "--profile", profile},
      {"copy", "--to", dir / "in/new", "--yes"},
      {"move", "--to", dir / "in/new", "--yes"},
      {"delete", "--to-deleted", "--yes"},
  };
  const auto before = Look(dir / "in");
  for (const auto& command : commands) {
    SCOPED_TRACE(command[0] + " " + command[1]);
    auto arguments = command;
    for (const auto& file : {photo, later, readOnly}) arguments.push_back(file);
    auto dry = arguments;
    dry.push_back("--dry-run");
    const auto promised = Json(dry);
    EXPECT_EQ(Look(dir / "in"), before) << "a dry run wrote";
    EXPECT_EQ(Json(arguments), promised);
    EXPECT_EQ(promised.size(), 3U);
    EXPECT_NE(Look(dir / "in"), before);
    const auto undone = Json({"undo"})["entries"];
    ASSERT_EQ(undone.size(), 1U);
    EXPECT_GE(undone[0]["files"].size(), 2U);
    EXPECT_EQ(Look(dir / "in"), before);
  }
  EXPECT_EQ(Json({"undo"}, 1)["entries"], json::array());
}

TEST_F(EditCommands, WriteWhatWasAskedFor) {
  Json({"rotate", "--right", photo, later, photo});
  EXPECT_EQ(Info(photo)["imageWidth"], 48) << "not turned, or twice";
  EXPECT_EQ(Info(later)["imageHeight"], 48);
  Json({"adjust-time", "--seconds", "90", photo});
  EXPECT_EQ(Info(photo)["dateTime"], "2003:05:17 10:12:42");
  Json({"timestamp", photo});
  struct stat status {};
  ::stat(photo.c_str(), &status);
  EXPECT_EQ(status.st_mtim.tv_sec, Info(photo)["shootingTime"].get<std::int64_t>());
  const auto entries = Json({"undo", "--list"})["entries"];
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0]["what"], "Timestamp");
  EXPECT_EQ(entries[2]["files"], (json{photo, later}));
  EXPECT_GT(entries[2]["when"], 1'000'000'000);
  EXPECT_NE(entries[0]["id"], entries[1]["id"]);
}

TEST_F(EditCommands, OneFailureDoesNotKeepTheOthers) {
  const auto text = dir.Write("in/notes.txt", "x"), gif = dir.Write("in/x.gif", "GIF89a");
  const std::vector<std::string> bad = {dir / "in/gone.jpg", text, dir / "in", gif};
  const auto before = Look(dir / "in");
  auto arguments = std::vector<std::string>{"rotate", "--right"};
  arguments.insert(arguments.end(), bad.begin(), bad.end());
  arguments.push_back(photo);
  const auto result = run(arguments);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(std::ranges::count(result.errors, '\n'), 4) << result.errors;
  for (const auto& path : bad) EXPECT_NE(result.errors.find(path), std::string::npos) << path;
  EXPECT_EQ(result.output, photo + ": turned\n");
  Json({"undo"});
  EXPECT_EQ(Look(dir / "in"), before);
  for (const auto& command : std::vector<std::vector<std::string>>{
           {"thumbnail", "--regenerate", gif},
           {"embed-profile", "--profile", text, photo},
           {"regenerate-jpeg", photo},
           {"delete", "--permanent", photo},
           {"delete", photo, later},
           {"copy", "--to", dir / "missing", photo},
           {"copy", "--to", text, photo},
           {"move", "--to", dir / "in", photo},
       }) {
    EXPECT_EQ(run(command).exitCode, 1) << command[0];
    EXPECT_EQ(Look(dir / "in"), before) << command[0];
  }
  for (const auto& command : std::vector<std::vector<std::string>>{{"rotate", photo},
                                                                   {"rotate", "--left", "--right", photo},
                                                                   {"adjust-time", photo},
                                                                   {"adjust-time", "--seconds", "1e30", photo},
                                                                   {"thumbnail", photo},
                                                                   {"delete", "--trash", "--permanent", photo}}) {
    EXPECT_EQ(run(command).exitCode, 2) << command[0];
  }
  EXPECT_EQ(Look(dir / "in"), before);
}

TEST_F(EditCommands, CompanionsGoAlongOnce) {
  const auto crw = dir.Write("in/x.crw", "raw"), thm = dir.Write("in/X.THM", "thm"), wav = dir.Write("in/x.wav", "w");
  const auto moved = Json({"move", "--to", dir / "out", "--yes", thm, crw, wav});
  ASSERT_EQ(moved.size(), 3U);
  EXPECT_EQ(moved[1]["files"], (json{dir / "out/x.crw", dir / "out/x.THM", dir / "out/x.wav"}));
  EXPECT_EQ(moved[0], (json{{"path", thm}, {"files", json::array()}, {"ok", true}, {"message", "goes with " + crw}}));
  EXPECT_FALSE(std::filesystem::exists(wav));
  EXPECT_EQ(Json({"delete", "--permanent", "--yes", dir / "out/x.crw"})[0]["files"].size(), 3U);
  EXPECT_EQ(Json({"undo"}, 1)["entries"], json::array()) << "undid what cannot be undone";
  EXPECT_EQ(Json({"undo"}, 1)["entries"], json::array()) << "undid the move of what is gone";
}

TEST_F(EditCommands, FilesInTheWayAreReplacedOnlyWhenAskedFor) {
  const auto other = dir.Write("other/a.jpg", "another"), out = dir / "out";
  dir.Write("out/a.jpg", "in the way");
  dir.Write("in/a.wav", "sound");
  const auto copy = [&](const std::string& option, int exitCode) {
    const std::vector<std::string> arguments = {"copy", photo, other, "--to", out, "--json"};
    auto with = arguments;
    if (!option.empty()) with.push_back(option);
    auto dry = with;
    dry.push_back("--dry-run");
    const auto before = Look(dir.Path());
    const auto promised = run(dry);
    EXPECT_EQ(Look(dir.Path()), before);
    const auto result = run(with);
    EXPECT_EQ(result.exitCode, exitCode) << option << result.errors;
    EXPECT_EQ(promised.exitCode, exitCode) << option << promised.errors;
    return json::parse(result.output);
  };
  EXPECT_EQ(copy("", 1)[0]["ok"], false);
  EXPECT_EQ(ReadAll(out + "/a.jpg"), "in the way");
  EXPECT_FALSE(ReadAll(out + "/a.wav")) << "a companion went without its image";
  EXPECT_EQ(copy("--skip", 0)[0]["files"], json::array());
  EXPECT_EQ(ReadAll(out + "/a.jpg"), "in the way");
  const auto renamed = copy("--rename", 0);
  EXPECT_EQ(renamed[0]["files"], (json{out + "/a (2).jpg", out + "/a (2).wav"}));
  EXPECT_EQ(renamed[1]["files"], (json{out + "/a (3).jpg"}));
  const auto overwritten = copy("--overwrite", 1);
  EXPECT_EQ(overwritten[0]["ok"], true);
  EXPECT_EQ(overwritten[1]["ok"], false) << "replaced what this run had made";
  EXPECT_EQ(ReadAll(out + "/a.jpg"), ReadAll(photo));
}

TEST_F(EditCommands, CancellingStopsBetweenFilesAndUndoTakesBackWhatWasDone) {
  std::vector<std::string> arguments = {"copy", "--to", dir / "out", "--yes", "--json"};
  for (int i = 0; i < 2000; ++i) {
    arguments.push_back(dir.Write("many/" + std::to_string(i) + ".jpg", std::string(1000, 'x')));
  }
  const auto result = run.InterruptAt(dir / "out/0.jpg", arguments);
  EXPECT_EQ(result.exitCode, 130);
  const auto done = json::parse(result.output);
  EXPECT_LT(done.size(), 2000U);
  EXPECT_EQ(Look(dir / "out").size(), done.size());
  EXPECT_EQ(Json({"undo"})["entries"][0]["files"].size(), done.size());
  EXPECT_TRUE(Look(dir / "out").empty());
}

TEST_F(EditCommands, RenameAllOrNone) {
  dir.Write("in/a.txt", "note");
  const auto other = dir.Write("other/c.jpg", ReadAll(photo).value());
  const auto before = Look(dir / "");
  const std::vector<std::string> all{"rename", photo, dir / "in/a.txt", later, other, "--style", "%n_%o"};
  const auto with = [&](std::vector<std::string> more) {
    auto arguments = all;
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  };
  const auto planned = Json(with({"--dry-run", "--sort", "name", "--first", "5"}));
  EXPECT_EQ(planned["renames"].size(), 3U);
  EXPECT_EQ(planned["renames"][1], (json{{"from", later}, {"to", dir / "in/0006_b.jpg"}}));
  EXPECT_EQ(planned["renames"][2]["to"], dir / "other/0005_c.jpg") << "each directory counts for itself";
  EXPECT_EQ(Look(dir / ""), before);

  dir.Write("other/0001_C.JPG", "in the way");
  const auto refused = Json(all, 1);
  EXPECT_TRUE(refused["renames"].empty());
  EXPECT_EQ(refused["conflicts"], json({dir / "other/0001_c.jpg"}));
  std::filesystem::remove(dir / "other/0001_C.JPG");
  for (const char* style : {"", "..", "a/b", "%n:"}) Json({"rename", photo, "--style", style}, 1);
  Json({"rename", photo, dir / "in/gone.jpg", "--style", "%n"}, 1);
  EXPECT_EQ(run({"rename", photo, "--style", "%n", "--digits", "8"}).exitCode, 2);
  EXPECT_EQ(Look(dir / ""), before);

  run({"tags", dir / "in", "--add", "b.jpg"});
  EXPECT_EQ(Json(with({"--case", "3"}))["renames"][0]["to"], dir / "in/0001_A.JPG");
  EXPECT_EQ(ReadAll(dir / "in/0001_A.TXT"), "note");
  EXPECT_EQ(ReadAll(dir / "in/tagged_files.txt"), "0002_B.JPG\r\n");
  run({"undo"});
  EXPECT_EQ(ReadAll(dir / "in/tagged_files.txt"), "b.jpg\r\n");
  std::filesystem::remove(dir / "in/tagged_files.txt");
  EXPECT_EQ(Look(dir / ""), before);
}

TEST_F(EditCommands, ToolsTellWhatTheyDoAndUndoTakesItBack) {
  const auto raw = dir.Write("in/r.nef", NefDirectories({.width = 64, .height = 48}).Build());
  dir.Write("in/made/a.jpg", MakePhoto({.width = 32, .height = 32, .model = "Other"}));
  dir.Write("in/made/b.tif", PictureDirectory(PaintPlain(8, 8, 0)).Build());
  struct Case {
    std::vector<std::string> command;
    json outputs;
  };
  const Case cases[] = {
      {{"copy-exif", photo, later, raw, "--to", dir / "in/made"}, {dir / "in/made/a.jpg", dir / "in/made/b.tif", ""}},
      {{"export-exif", photo, later, "--out", dir / "in/info.txt"}, {dir / "in/info.txt", dir / "in/info.txt"}},
      {{"export-exif", photo, later, "--per-file"}, {dir / "in/a.txt", dir / "in/b.txt"}},
      {{"extract-jpeg", raw, photo, "--out", dir / "in/made"}, {dir / "in/made/r.jpg", ""}},
  };
  const auto before = Look(dir / "in");
  for (const auto& [command, outputs] : cases) {
    SCOPED_TRACE(command[0]);
    auto dry = command;
    dry.push_back("--dry-run");
    const auto promised = Json(dry);
    EXPECT_EQ(Look(dir / "in"), before) << "a dry run wrote";
    const auto done = Json(command);
    EXPECT_EQ(done, promised);
    ASSERT_EQ(done.size(), outputs.size());
    for (std::size_t i = 0; i < done.size(); ++i) {
      EXPECT_EQ(done[i]["output"], outputs[i]);
      EXPECT_TRUE(done[i]["ok"]);
      EXPECT_EQ(done[i]["message"] == "", outputs[i] != "");
    }
    EXPECT_NE(Look(dir / "in"), before);
    Json({"undo"});
    EXPECT_EQ(Look(dir / "in"), before);
  }
}

TEST_F(EditCommands, ToolsLeaveTheirQuestionsToOptions) {
  const auto raw = dir.Write("in/r.nef", NefDirectories({.width = 64, .height = 48}).Build());
  const auto target = dir.Write("in/made/a.jpg", MakePhoto({.width = 32, .height = 32}));
  ::chmod(target.c_str(), 0444);
  dir.Write("in/info.txt", "mine");
  dir.Write("in/a.txt", "mine");
  dir.Write("in/made/r.jpg", "mine");
  struct Case {
    std::vector<std::string> command;
    std::vector<std::string> answer;
    int code = 1;
  };
  const Case cases[] = {
      {{"copy-exif", photo, "--to", dir / "in/made"}, {"--yes"}},
      {{"export-exif", photo, "--out", dir / "in/info.txt"}, {"--overwrite"}},
      {{"export-exif", photo, "--per-file"}, {"--overwrite"}},
      {{"extract-jpeg", raw, "--out", dir / "in/made"}, {"--overwrite"}},
      {{"extract-jpeg", raw, "--out", dir / "in/new"}, {"--yes"}},
      {{"copy-exif", photo, "--to", dir / "in/none"}, {}},
      {{"extract-jpeg", raw, "--out", dir / "in/a.jpg", "--yes"}, {}},
      {{"export-exif", photo, "--out", photo, "--overwrite"}, {}},
      {{"export-exif", photo, "--out", dir / "x.txt", "--delimiter", "::"}, {}, 2},
      {{"export-exif", photo}, {}, 2},
  };
  for (const auto& [command, answer, code] : cases) {
    SCOPED_TRACE(command[0] + " " + command.back());
    const auto before = Look(dir / "in");
    const auto refused = run(command);
    EXPECT_EQ(refused.exitCode, code);
    EXPECT_NE(refused.errors, "");
    EXPECT_EQ(Look(dir / "in"), before);
    if (answer.empty()) continue;
    auto answered = command;
    answered.insert(answered.end(), answer.begin(), answer.end());
    EXPECT_EQ(run(answered).exitCode, 0);
    EXPECT_NE(Look(dir / "in"), before);
  }
  EXPECT_EQ(run({"extract-jpeg", raw, "--out", dir / "in/made", "--skip"}).exitCode, 0);
}

}  // namespace
}  // namespace ml::test
