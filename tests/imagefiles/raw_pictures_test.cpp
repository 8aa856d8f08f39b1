#include <gtest/gtest.h>

#include <filesystem>

#include <functional>
#include <string>

#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "platform/errors.h"
#include "support/avi_builder.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/jpeg_builder.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using test::CameraRaw;

int Channel(const imaging::PixelBuffer& pixels, int x, int y, int channel) {
  return std::to_integer<int>(pixels.Row(y)[x * 3 + channel]);
}

struct Case {
  const char* name;
  const char* file;
  std::function<std::string(const CameraRaw&)> build;
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

const Case kCases[] = {
    {"Crw", "a.crw", [](const CameraRaw& raw) { return CrwHeap(raw).BuildFile(test::Endian::Little); }},
    {"Nef", "a.nef", [](const CameraRaw& raw) { return NefDirectories(raw).Build(); }},
    {"Orf", "a.orf", [](const CameraRaw& raw) { return OrfDirectories(raw).Build(); }},
    {"Raf", "a.raf", [](const CameraRaw& raw) { return RafFile(raw, RafDirectories(raw)); }},
    {"LaterRaf", "a.raf", [](const CameraRaw& raw) { return RafFile(raw, RafDirectories(raw), 148); }},
    {"Mrw", "a.mrw", [](const CameraRaw& raw) { return MrwFile(raw, MrwDirectories(raw)); }},
    {"Pef", "a.pef", [](const CameraRaw& raw) { return PefDirectories(raw).Build(); }},
};

class RawPicture : public testing::TestWithParam<Case> {};

/// Three points of the turned picture against the preview as the camera stored it.
TEST_P(RawPicture, IsThePreviewTurnedAsRecorded) {
  struct Turned {
    int orientation, width, height;
    std::pair<int, int> (*place)(int x, int y);  ///< of a pixel of the 640 x 480 preview
  };
  const Turned cases[] = {{1, 640, 480, [](int x, int y) { return std::pair(x, y); }},
                          {3, 640, 480, [](int x, int y) { return std::pair(639 - x, 479 - y); }},
                          {6, 480, 640, [](int x, int y) { return std::pair(479 - y, x); }},
                          {8, 480, 640, [](int x, int y) { return std::pair(y, 639 - x); }}};
  const test::TempDir dir;
  const auto stored = CreateImageFile(dir.Write("stored.jpg", RawPreview(CameraRaw{})), {})->GetPixels();
  for (const auto& c : cases) {
    const auto path = dir.Write(GetParam().file, GetParam().build({.orientation = c.orientation}));
    const auto image = CreateImageFile(path, {});
    const auto pixels = image->GetPixels();
    EXPECT_EQ(image->Source(), PictureSource::Embedded);
    ASSERT_EQ(pixels.width, c.width) << c.orientation;
    ASSERT_EQ(pixels.height, c.height);
    for (const auto& [x, y] : {std::pair(3, 2), std::pair(600, 40), std::pair(320, 450)}) {
      const auto [turnedX, turnedY] = c.place(x, y);
      for (int i = 0; i < 3; ++i) EXPECT_EQ(Channel(pixels, turnedX, turnedY, i), Channel(stored, x, y, i));
    }
    const auto made = MakeThumbnail(path, 120, {});
    EXPECT_EQ(made.source, PictureSource::Embedded);
    EXPECT_EQ(std::pair(made.pixels.width, made.pixels.height),
              c.width > c.height ? std::pair(120, 90) : std::pair(90, 120));
  }
}

TEST_P(RawPicture, UsesTheWiderLimitOnceItIsTurned) {
  const test::TempDir dir;
  const auto image = CreateImageFile(dir.Write(GetParam().file, GetParam().build({.orientation = 8})), {});
  const auto bitmap = image->GetBitmap({100, 80, 75, 100}, {});
  EXPECT_EQ(bitmap.width, 75);
  EXPECT_EQ(bitmap.height, 100);
}

INSTANTIATE_TEST_SUITE_P(Formats, RawPicture, testing::ValuesIn(kCases),
                         [](const auto& c) { return std::string(c.param.name); });

TEST(RawFile, WithoutPreviewIsDevelopedAtHalfSizeAndTurned) {
  const test::TempDir dir;
  const CameraRaw raw{.orientation = 6};
  const auto path = dir.Write("a.mrw", MrwFile(raw, MrwDirectories(raw).Without(34665)));
  const auto image = CreateImageFile(path, {});
  const auto pixels = image->GetPixels();
  EXPECT_EQ(image->Source(), PictureSource::Full);
  EXPECT_EQ(pixels.width, 384);
  EXPECT_EQ(pixels.height, 512);
  EXPECT_EQ(image->GetBitmap({2000, 2000}, {}).width, 384) << "half is all there is";
  EXPECT_EQ(MakeThumbnail(path, 160, {}).pixels.height, 160);
}

TEST(RawFile, PrefersDevelopingToATinyPreviewButNotForATinyThumbnail) {
  const test::TempDir dir;
  const CameraRaw raw{.previewWidth = 160, .previewHeight = 120};
  const auto path = dir.Write("a.nef", NefDirectories(raw).Build());
  const auto image = CreateImageFile(path, {});
  EXPECT_EQ(image->GetPixels().width, 512);
  EXPECT_EQ(image->Source(), PictureSource::Full);
  EXPECT_EQ(MakeThumbnail(path, 160, {}).source, PictureSource::Embedded);
  EXPECT_EQ(MakeThumbnail(path, 240, {}).source, PictureSource::Full);
}

TEST(RawFile, WithABrokenPreviewAndNoSensorDataSaysSo) {
  const test::TempDir dir;
  const auto path =
      dir.Write("a.crw", test::CiffBuilder().Data(0x2007, "\xff\xd8\xff no JPEG").BuildFile(test::Endian::Little));
  const auto said = test::Refusal([&] { CreateImageFile(path, {})->GetPixels(); });
  EXPECT_TRUE(said.starts_with("Unable to read image:\n" + path + "\nError reading JPEG")) << said;
}

class CompanionThumbnail : public testing::Test {
 protected:
  static std::string Crw(const std::string& model = {}) {
    return test::CrwHeap({.orientation = 6, .model = model}).BuildFile(test::Endian::Little);
  }
  static std::string Thm(const std::string& model = {}) {
    return test::WithExif(EncodeJpeg(test::PaintPlain(160, 120, 0x0000ff)), {.make = "Canon", .model = model});
  }
  PictureSource SourceOf(const std::string& path, int size, const ImageFileOptions& options = {}) {
    return MakeThumbnail(path, size, options).source;
  }
  test::TempDir dir_;
};

TEST_F(CompanionThumbnail, OfACrwIsUsedUpToItsSizeAndTurned) {
  const auto path = dir_.Write("IMG_1.CRW", Crw());
  dir_.Write("img_1.Thm", "another file");
  dir_.Write("IMG_1.THM", Thm());
  const auto made = MakeThumbnail(path, 160, {.ignoreEmbeddedThumbnails = true});
  EXPECT_EQ(made.source, PictureSource::Thm);
  EXPECT_EQ(made.pixels.width, 120);
  EXPECT_EQ(made.pixels.height, 160);
  EXPECT_EQ(SourceOf(path, 161), PictureSource::Embedded);
  const auto image = CreateImageFile(path, {});
  EXPECT_EQ(image->GetPixels().height, 640);
}

TEST_F(CompanionThumbnail, OfTheD60IsLeftOutIfEmbeddedOnesAre) {
  const auto path = dir_.Write("a.crw", Crw("Canon EOS D60"));
  dir_.Write("a.thm", Thm("Canon EOS D60"));
  EXPECT_EQ(SourceOf(path, 80), PictureSource::Thm);
  EXPECT_EQ(SourceOf(path, 80, {.ignoreEmbeddedThumbnails = true}), PictureSource::Embedded);
}

TEST_F(CompanionThumbnail, ThatIsBrokenIsPassedOver) {
  const auto crw = dir_.Write("a.crw", Crw());
  dir_.Write("a.thm", "no picture");
  EXPECT_EQ(SourceOf(crw, 80), PictureSource::Embedded);
}

TEST_F(CompanionThumbnail, IsNotLookedForWhereItIsKnown) {
  const auto path = dir_.Write("a.crw", Crw());
  dir_.Write("a.thm", Thm());
  platform::CompanionSet none, other;
  other.thm = dir_.Write("b.thm", Thm());
  EXPECT_EQ(MakeThumbnail(path, 80, {}, &none).source, PictureSource::Embedded);
  std::filesystem::remove(dir_ / "a.thm");
  EXPECT_EQ(MakeThumbnail(path, 80, {}, &other).source, PictureSource::Thm);
}

TEST_F(CompanionThumbnail, StandsForAMovieUpToItsSizeAndWhereNoFrameCanBeRead) {
  const auto movie = test::PaintPlain(320, 240, 0xff0000);
  dir_.Write("a.thm", Thm());
  const auto path = dir_.Write("a.avi", test::EncodeAvi({movie}));
  EXPECT_EQ(SourceOf(path, 160, {.ignoreEmbeddedThumbnails = true}), PictureSource::Thm);
  EXPECT_EQ(SourceOf(path, 240), PictureSource::Full);
  const auto unknown = dir_.Write("a.avi", test::EncodeAvi({movie}, {.frames = test::AviFrames::Unknown}));
  EXPECT_EQ(SourceOf(unknown, 240), PictureSource::Thm);
  EXPECT_EQ(CreateImageFile(unknown, {})->GetPixels().width, 160);
  EXPECT_THROW(MakeThumbnail(dir_.Write("b.avi", "RIFF"), 80, {}), platform::UserError);
}

class Eos1D : public testing::Test {
 protected:
  std::string WriteRaw(const std::string& name) { return dir_.Write(name, test::Eos1DDirectories({}).Build()); }
  test::TempDir dir_;
};

TEST_F(Eos1D, ShowsItsViewingJpegIfTheyAreBound) {
  const auto path = WriteRaw("a.tif");
  dir_.Write("A.JPG", test::WithExif(EncodeJpeg(test::PaintPlain(300, 200, 0xff)), {.orientation = 6}));
  const auto image = CreateImageFile(path, {});
  EXPECT_EQ(image->Row().className, "Eos1DRawImageFile");
  EXPECT_TRUE(image->IsRaw());
  EXPECT_EQ(image->GetPixels().height, 300) << "turned as recorded, whatever is done with other JPEG files";
  EXPECT_EQ(image->Source(), PictureSource::Viewing);
  EXPECT_EQ(MakeThumbnail(path, 80, {}).source, PictureSource::Viewing);
  EXPECT_NE(MakeThumbnail(path, 80, {.bindJpegToEos1DRaw = false}).source, PictureSource::Viewing);
  platform::CompanionSet known, none;
  known.jpg = dir_ / "A.JPG";
  EXPECT_EQ(MakeThumbnail(path, 80, {}, &known).source, PictureSource::Viewing);
  EXPECT_EQ(MakeThumbnail(path, 80, {}, &none).source, PictureSource::Full);
}

TEST_F(Eos1D, ShowsEvenWithoutViewingJpeg) {
  const auto path = WriteRaw("a.tif");
  const auto image = CreateImageFile(path, {});
  EXPECT_GT(image->GetPixels().width, 200);
  EXPECT_EQ(image->Source(), PictureSource::Full);
  EXPECT_EQ(MakeThumbnail(path, 80, {}).source, PictureSource::Full);
}

TEST_F(Eos1D, IsOpenedAsRawUnderBothNamesOfTiffFiles) {
  EXPECT_EQ(CreateImageFile(WriteRaw("a.tiff"), {})->Row().format, Format::Eos1DRaw);
  EXPECT_EQ(CreateImageFile(dir_.Write("b.tif", "II*"), {})->Row().format, Format::Tiff);
}

}  // namespace
}  // namespace ml::imagefiles
