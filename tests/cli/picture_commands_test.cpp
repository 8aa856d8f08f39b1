#include <filesystem>
#include <numeric>

#include "cli/cli_run.h"
#include "support/ciff_builder.h"
#include "support/colour_profiles.h"
#include "support/nef_builder.h"
#include "support/png_builder.h"
#include "support/sample_photo.h"

namespace ml::test {
namespace {

class PictureCommand : public CliTest {};

TEST_F(PictureCommand, ThumbAndPreviewWritePictures) {
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

TEST_F(PictureCommand, PicturesOfOneRunDoNotTakeEachOthersPlace) {
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

TEST_F(PictureCommand, ThumbnailsComeInOrderAndGiveWayToEarlierOnesOnly) {
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

TEST_F(PictureCommand, CancellingTellsWhatWasDone) {
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

TEST_F(PictureCommand, TellsWhereThePicturesOfRawFilesCameFrom) {
  const auto crw = dir.Write("a.crw", CrwHeap(CameraRaw{.orientation = 6}).BuildFile(Endian::Little));
  dir.Write("a.thm", MakePhoto({.width = 160, .height = 120, .thumbnail = false}));
  const auto thumb = Json({"thumb", crw, "--size", "80", "--out", dir / "out"});
  EXPECT_EQ(thumb[0]["source"], "thm");
  EXPECT_EQ(thumb[0]["height"], 80);
  const auto preview = Json({"preview", crw, "--box", "300x300", "--out", dir / "out2"});
  EXPECT_EQ(preview[0]["source"], "embedded");
  EXPECT_EQ(preview[0]["width"], 225);
}

TEST_F(PictureCommand, ConvertGivesEachFileItsOwnWhiteBalanceUnlessToldOtherwise) {
  const auto samples = SamplesDir();
  if (!samples) GTEST_SKIP();
  const auto first = *samples + "/crw/canon-powershot-s40-0112.crw", second = *samples + "/crw/canon-eos-d30.crw";
  Json({"convert", second, "--out", dir / "alone"});
  Json({"convert", first, second, "--out", dir / "both"});
  Json({"--setting", "RawSameWhiteBalance=1", "convert", first, second, "--out", dir / "carried"});
  const auto alone = ReadAll(dir / "alone/canon-eos-d30.jpg");
  ASSERT_TRUE(alone);
  EXPECT_TRUE(alone == ReadAll(dir / "both/canon-eos-d30.jpg"));
  EXPECT_FALSE(alone == ReadAll(dir / "carried/canon-eos-d30.jpg"));
}

TEST_F(PictureCommand, ConvertTellsWhatACameraCannotDo) {
  const auto crw = [&](const char* name, const char* model) {
    return dir.Write(name, CrwHeap(CameraRaw{.make = "Canon", .model = model}).BuildFile(Endian::Little));
  };
  const auto g1 = crw("g1.crw", "Canon PowerShot G1"), d60 = crw("d60.crw", "Canon EOS D60");
  const auto nef = dir.Write("a.nef", BuildNef({.width = 6, .height = 6}, std::vector<std::uint16_t>(36)).file);
  const auto out = dir / "out/";
  const auto convert = [&](const char* method) {
    return Json({"--setting", "RawConvertTone=1", "convert", d60, g1, nef, "--out", dir / "out", "--format", "tiff-16",
                 "--method", method, "--dry-run"});
  };
  const auto combined = convert("combined"), linear = convert("linear");
  EXPECT_EQ(combined[0]["output"], out + "d60C.tif");
  EXPECT_EQ(combined[0]["message"], "");
  EXPECT_EQ(combined[1]["output"], out + "g1.tif");
  EXPECT_EQ(combined[1]["message"],
            "Canon PowerShot G1 does not support combined conversion, the normal method is used; only supports 8-bit "
            "conversion, the picture has 8 bits; does not know RawConvertTone=1");
  EXPECT_EQ(combined[2]["output"], out + "aC.tif") << "named by what was asked for, as in the window";
  EXPECT_EQ(combined[2]["message"],
            "NIKON D1H does not support combined conversion, the normal method is used; does not know "
            "RawConvertTone=1");
  EXPECT_EQ(linear[1]["output"], out + "g1.tif");
  EXPECT_EQ(linear[2]["output"], out + "aL.tif");
  EXPECT_EQ(linear[2]["message"], "NIKON D1H does not know RawConvertTone=1");
  const auto told = run({"convert", g1, "--out", dir / "out", "--method", "linear", "--dry-run"});
  EXPECT_EQ(told.exitCode, 0);
  EXPECT_EQ(told.errors, "marrowlantern-cli: " + g1 +
                             ": Canon PowerShot G1 does not support linear conversion, the normal method is used\n");
}

TEST_F(PictureCommand, RawWritesTheSamplesUntouchedAndGoesOnAfterAFailure) {
  const std::vector<std::uint16_t> samples(6 * 6, 0x0a0b);
  const auto nef = BuildNef({.width = 6, .height = 6}, samples).file;
  const auto whole = dir.Write("a.nef", nef), cut = dir.Write("cut.nef", nef.substr(0, nef.size() - 1));
  const auto before = dir.Write("out/cut.nef.pgm", "before");
  const auto told = Json({"raw", cut, whole, "--out", dir / "out", "--overwrite"}, 1);
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0], json({{"path", cut},
                           {"output", nullptr},
                           {"ok", false},
                           {"message", cut + ": the file ends before its raw data"}}));
  EXPECT_EQ(ReadAll(before), "before");
  EXPECT_EQ(told[1], json({{"path", whole}, {"output", dir / "out/a.nef.pgm"}, {"ok", true}, {"message", ""}}));
  std::string expected = "P5\n6 6\n65535\n";
  for (std::size_t i = 0; i < samples.size(); ++i) expected += "\x0a\x0b";
  EXPECT_EQ(ReadAll(dir / "out/a.nef.pgm"), expected);
  EXPECT_EQ(Json({"raw", whole, "--out", dir / "out"}, 1)[0]["ok"], false);
  EXPECT_EQ(Json({"raw", whole, "--out", dir / "out", "--skip"})[0]["output"], nullptr);
}

TEST_F(PictureCommand, HistogramCountsTheFittedPicture) {
  const auto photo = dir.Write("a.jpg", EncodeJpeg(PaintPlain(100, 80, 0xc86432), {.quality = 98}));
  const auto all = Json({"histogram", photo, dir / "gone.jpg", "--box", "50x50"}, 1);
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[0]["path"], photo);
  EXPECT_EQ(all[0]["pixelCount"], 2000);
  const auto red = all[0]["red"].get<std::vector<int>>(), blue = all[0]["blue"].get<std::vector<int>>(),
             combined = all[0]["combined"].get<std::vector<int>>();
  EXPECT_EQ(std::accumulate(red.begin(), red.end(), 0), 2000);
  EXPECT_EQ(std::accumulate(combined.begin(), combined.end(), 0), 8000);
  ASSERT_EQ(blue.size(), 256U);
  EXPECT_EQ(blue[0x31] + blue[0x32] + blue[0x33], 2000);
  EXPECT_NE(all[1]["message"].get<std::string>().find("gone.jpg"), std::string::npos);
  EXPECT_EQ(all[1]["pixelCount"], 0);
  EXPECT_NE(run({"histogram", photo, "--box", "50x50"}).output.find("2000 pixels, mean red 200.0"), std::string::npos);
  EXPECT_EQ(run({"histogram", photo, "--box", "50"}).exitCode, 2);
}

TEST_F(PictureCommand, PicturesAreInTheColoursOfTheMonitorWhereTheSettingsSaySo) {
  const auto swapping = EncodeProfile({.swapped = true, .name = "Swapping"});
  const auto red =
      dir.Write("red/a.png", EncodePng(PaintPlain(20, 20, 0xff0000), {.before = PngProfile("", swapping)}));
  const auto blue = dir.Write("blue/a.png", EncodePng(PaintPlain(20, 20, 0x0000ff)));
  EXPECT_EQ(Json({"info", red})[0]["iccProfileName"], "Swapping");
  const auto monitor = "MonitorProfile=" + dir.Write("monitor.icc", EncodeProfile({}));
  int count = 0;
  const auto make = [&](std::vector<std::string> arguments, const std::string& file) {
    const auto out = dir / std::to_string(++count);
    arguments.insert(arguments.end(), {file, "--out", out, "--setting", monitor});
    Json(arguments);
    const auto picture = ReadAll(out + "/a.png.png");
    EXPECT_TRUE(picture) << arguments[0];
    return picture.value_or("");
  };
  const std::string on = "EnableMonitorProfile=1";
  for (const auto& command : {std::vector<std::string>{"thumb", "--size", "16"}, {"preview", "--box", "16x16"}}) {
    auto managed = command;
    managed.insert(managed.end(), {"--setting", on});
    EXPECT_NE(make(command, red), make(command, blue));
    EXPECT_EQ(make(managed, red), make(command, blue));
  }
  EXPECT_EQ(make({"preview", "--box", "16x16", "--grey", "--setting", on}, red),
            make({"preview", "--box", "16x16", "--grey"}, red));
}

}  // namespace
}  // namespace ml::test
