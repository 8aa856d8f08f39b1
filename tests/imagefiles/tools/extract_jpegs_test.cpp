#include "imagefiles/tools/extract_jpegs.h"

#include <filesystem>

#include "imagefiles/tools/tool_test.h"
#include "metadata/jpeg_size.h"
#include "platform/file_status.h"
#include "platform/text.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"

namespace ml::imagefiles {
namespace {

using test::CameraRaw;
using test::Endian;

CameraRaw Upright() { return {.width = 64, .height = 48, .previewWidth = 64, .previewHeight = 48}; }
CameraRaw OnItsSide() {
  auto raw = Upright();
  raw.orientation = 6;
  return raw;
}
std::string Crw(const CameraRaw& raw) { return test::CrwHeap(raw).BuildFile(Endian::Little); }

class ExtractTest : public ToolTest {
 protected:
  ExtractTest() { std::filesystem::create_directory(settings_.directory); }
  std::string Size(const std::string& path) {
    const auto file = Content(path);
    const auto size = metadata::ReadJpegSize(metadata::MemorySource(platform::AsBytes(file)));
    return size ? std::to_string(size->width) + "x" + std::to_string(size->height) : "none";
  }
  std::string Out(const std::string& name) { return settings_.directory + "/" + name; }
  ToolReport Extract(const std::vector<std::string>& images, OnFailure onFailure = OnFailure::GoOn) {
    return ExtractJpegs(images, settings_, tools_, Run(onFailure));
  }
  ExtractSettings settings_{.directory = dir_ / "out"};
};

TEST_F(ExtractTest, WhatTheCameraStoredComesOutByteForByte) {
  settings_.exif = settings_.rotate = settings_.timestamp = false;
  auto raw = OnItsSide();
  raw.previewWidth = 640;  // more than the thumbnails have
  raw.previewHeight = 480;
  const std::vector<std::string> images = {
      Write("crw.crw", Crw(raw)), Write("nef.nef", test::NefDirectories(raw).Build()),
      Write("orf.orf", test::OrfDirectories(raw).Build()), Write("pef.pef", test::PefDirectories(raw).Build())};
  EXPECT_EQ(Letters(Extract(images)), "DDDD");
  for (const auto* name : {"crw.jpg", "nef.jpg", "orf.jpg", "pef.jpg"}) {
    EXPECT_TRUE(Content(Out(name)) == test::RawPreview(raw)) << name;
  }
}

TEST_F(ExtractTest, TheJpegGetsDataTurnAndTimeOfTheShot) {
  struct Case {
    std::string name, content;
    bool thm = false;
  };
  const auto raw = OnItsSide();
  const Case cases[] = {{"thm.crw", Crw(raw), true},
                        {"bare.crw", Crw(raw)},
                        {"n.nef", test::NefDirectories(raw).Build()},
                        {"r.raf", test::RafFile(raw, test::RafDirectories(raw))}};
  for (const auto& one : cases) {
    const auto image = Write(one.name, one.content);
    const auto stem = one.name.substr(0, one.name.find('.'));
    if (one.thm) Write(stem + ".thm", test::MakeThm(raw));
    for (const bool rotate : {true, false}) {
      settings_.rotate = rotate;
      settings_.overwrite = true;
      const auto report = Extract({image});
      ASSERT_EQ(Letters(report), "D") << report[0].note;
      EXPECT_EQ(report[0].note, "") << one.name;
      const auto path = Out(stem + ".jpg");
      const auto exif = Read(path);
      EXPECT_EQ(exif.dateTime, "2003:05:17 10:11:12") << one.name;
      EXPECT_EQ(exif.model, Read(image).model) << one.name;
      EXPECT_EQ(exif.orientation, rotate ? 1 : 6) << one.name;
      EXPECT_EQ(Size(path), rotate ? "48x64" : "64x48") << one.name;
      const auto status = platform::ReadFileStatus(path);
      EXPECT_EQ(status->modified, Read(image).shootingTime * 1'000'000'000) << one.name;
    }
  }
}

TEST_F(ExtractTest, ExistingFilesAreKeptUnlessTheyAreToBeReplaced) {
  const auto image = Write("a.crw", Crw(Upright()));
  const auto old = Write("out/A.JPG", "mine");
  auto report = Extract({image});
  EXPECT_EQ(Letters(report), "K");
  EXPECT_EQ(report[0].note, old + " exists");
  EXPECT_EQ(Content(old), "mine");
  settings_.overwrite = true;
  report = Extract({image});
  EXPECT_EQ(report[0].output, old);
  EXPECT_NE(Content(old), "mine");
  EXPECT_FALSE(std::filesystem::exists(Out("a.jpg")));
}

TEST_F(ExtractTest, FilesOfOneNameDoNotTakeEachOthersPlace) {
  const auto crw = Write("a.crw", Crw(Upright())), nef = Write("A.nef", test::NefDirectories(Upright()).Build());
  const auto jpeg = Write("a.jpg", test::RawPreview(Upright())), other = Write("b.crw", Crw(Upright()));
  const auto report = Extract({jpeg, crw, nef, other});
  EXPECT_EQ(Letters(report), "SDDD");
  EXPECT_EQ(report[1].output, Out("a.crw.jpg"));
  EXPECT_EQ(report[2].output, Out("A.nef.jpg"));
  EXPECT_EQ(report[3].output, Out("b.jpg"));
}

TEST_F(ExtractTest, ViewingJpegsAreCopiedIfTheyAreWanted) {
  const auto raw = Write("a.tif", test::Eos1DDirectories({}).Build()), lone = Write("b.tif", Content(raw));
  const auto viewing = Write("a.JPG", test::RawPreview(Upright()));
  EXPECT_EQ(Letters(Extract({raw, lone})), "SS");
  settings_.viewingJpegs = true;
  EXPECT_EQ(Letters(Extract({raw, lone})), "DS");
  EXPECT_TRUE(Content(Out("a.jpg")) == Content(viewing));
  settings_.directory = dir_.Path();
  settings_.overwrite = true;
  EXPECT_EQ(Letters(Extract({raw})), "K") << "a file was to be replaced by itself";
}

TEST_F(ExtractTest, DamagedFilesAreToldOfAndLeaveNothing) {
  const auto whole = Crw(Upright());
  const auto nef = test::NefDirectories(Upright()).Build();
  const auto preview = nef.find(test::RawPreview(Upright()));
  ASSERT_NE(preview, std::string::npos);
  struct Case {
    std::string path, sentence;
  };
  const Case cases[] = {
      {Write("cut.crw", whole.substr(0, whole.size() / 2)), "Error reading JPEG from:\n"},
      {Write("head.crw", "II"), "Error reading JPEG from:\n"},
      {Write("cut.nef", nef.substr(0, preview + 1000)), "Error reading from:\n"},
      {dir_ / "none.crw", "Error reading JPEG from:\n"},
  };
  for (const auto& one : cases) {
    const auto report = Extract({one.path});
    EXPECT_EQ(Letters(report), "F");
    EXPECT_EQ(report[0].note, one.sentence + one.path);
  }
  EXPECT_TRUE(std::filesystem::is_empty(settings_.directory));
  EXPECT_EQ(Refusal([&] { Extract({cases[2].path}, OnFailure::Stop); }), cases[2].sentence + cases[2].path);
}

TEST_F(ExtractTest, ARawFileWithoutAJpegKeepsNobodyWaiting) {
  const auto bare = Write("bare.nef", test::Eos1DDirectories(Upright()).Build());
  const auto other = Write("other.nef", test::NefDirectories(Upright()).Build());
  const auto report = Extract({bare, other}, OnFailure::Stop);
  EXPECT_EQ(Letters(report), "FD");
  EXPECT_EQ(report[0].note, "Error reading JPEG from:\n" + bare);
}

TEST_F(ExtractTest, TheDirectoryIsMadeIfTheUserWantsIt) {
  const auto directory = DefaultExtractDirectory(dir_ / "x/a.crw");
  EXPECT_EQ(directory, dir_ / "x/extracted");
  ask_.buttons = {platform::Button::No, platform::Button::Yes};
  EXPECT_FALSE(EnsureExtractDirectory(directory, ask_));
  EXPECT_TRUE(EnsureExtractDirectory(directory, ask_));
  EXPECT_TRUE(std::filesystem::is_directory(directory));
  ASSERT_EQ(ask_.shown.size(), 2U);
  EXPECT_EQ(ask_.shown[0].text, "Output directory does not exist:\n" + directory + "\n\nDo you want to create it?");
  const auto file = Write("file", "");
  EXPECT_EQ(Refusal([&] { EnsureExtractDirectory(file, ask_); }),
            "Specified output directory exists but is not a directory:\n" + file);
  ask_.buttons = {platform::Button::Yes};
  EXPECT_TRUE(Refusal([&] { EnsureExtractDirectory(file + "/x", ask_); }).starts_with("Unable to create directory:\n"));
}

}  // namespace
}  // namespace ml::imagefiles
