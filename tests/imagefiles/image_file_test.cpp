#include "imagefiles/image_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <numeric>

#include "platform/errors.h"
#include "support/jpeg_builder.h"
#include "support/refusal.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

TEST(FitToLimits, FollowsTheRuleInWholeNumbers) {
  struct Case {
    int width, height;
    DisplayLimits limits;
    imaging::PictureSize size;
  };
  const Case cases[] = {
      {3000, 2000, {600, 500}, {600, 400}},
      {2000, 3000, {600, 500}, {333, 500}},
      {640, 480, {1000, 1000}, {640, 480}},
      {640, 480, {640, 480}, {640, 480}},
      {3072, 2048, {160, 160}, {160, 106}},
      {2000, 3000, {600, 500, 400, 900}, {400, 600}},  // the wider limit of a portrait
      {2000, 3000, {600, 500, 400, 550}, {366, 550}},  // and its height
      {2000, 3000, {600, 500, 333, 900}, {333, 500}},  // not below it
      {3000, 2000, {600, 500, 700, 700}, {600, 400}},  // the height was not at fault
      {300, 900, {600, 500, 400, 900}, {300, 900}},    // the alternative would enlarge
      {10000, 3, {100, 100}, {100, 1}},
      {3, 10000, {100, 100}, {1, 100}},
      {1, 1, {100, 100}, {1, 1}},
      {30000, 20000, {300, 300}, {300, 200}},
      {60000, 60000, {59999, 60000}, {59999, 59999}},
  };
  for (const auto& c : cases) {
    const auto size = FitToLimits(c.width, c.height, c.limits);
    EXPECT_TRUE(size.width == c.size.width && size.height == c.size.height)
        << c.width << "x" << c.height << " gives " << size.width << "x" << size.height;
  }
}

TEST(FillBox, TakesTheWidthOrElseTheHeightOfTheBox) {
  struct Case {
    imaging::PictureSize picture, box, size;
  };
  const Case cases[] = {{{3072, 2048}, {3000, 3000}, {3000, 2000}},
                        {{2048, 3072}, {3000, 3000}, {2000, 3000}},
                        {{100, 50}, {3000, 3000}, {3000, 1500}},
                        {{30000, 20000}, {150000, 150000}, {150000, 100000}}};
  for (const auto& c : cases) {
    const auto size = FillBox(c.picture, c.box);
    EXPECT_EQ(std::pair(size.width, size.height), std::pair(c.size.width, c.size.height));
  }
}

class JpegPicture : public testing::Test {
 protected:
  std::unique_ptr<ImageFile> Open(const std::string& bytes, const ImageFileOptions& options = {}) {
    return CreateImageFile(dir_.Write("a.jpg", bytes), options);
  }
  test::TempDir dir_;
};

int Channel(const imaging::PixelBuffer& pixels, int x, int y, int channel) {
  return std::to_integer<int>(pixels.Row(y)[x * 3 + channel]);
}

TEST_F(JpegPicture, IsFittedSwappedAndCounted) {
  const auto file = Open(EncodeJpeg(test::PaintPlain(100, 80, 0xc86432), {.quality = 98}));
  const auto bitmap = file->GetBitmap({50, 50}, {});
  EXPECT_EQ(bitmap.width, 50);
  EXPECT_EQ(bitmap.height, 40);
  EXPECT_EQ(bitmap.stride, 52);
  EXPECT_EQ(bitmap.order, imaging::PixelOrder::Bgr);
  EXPECT_NEAR(Channel(bitmap, 49, 39, 0), 0x32, 2);
  EXPECT_NEAR(Channel(bitmap, 49, 39, 2), 0xc8, 2);

  const auto colours = file->GetHistogram();
  const auto sum = [](const auto& table) { return std::accumulate(table.begin(), table.end(), 0); };
  EXPECT_EQ(colours.pixelCount, 2000U);
  EXPECT_EQ(sum(colours.red), 2000);
  EXPECT_EQ(sum(colours.combined), 8000);
  EXPECT_EQ(colours.red[static_cast<std::size_t>(Channel(bitmap, 0, 0, 2))], 2000);

  const auto grey = file->GetBitmap({50, 50}, {.greyscale = true});
  const int mean = (Channel(bitmap, 5, 5, 0) + Channel(bitmap, 5, 5, 1) + Channel(bitmap, 5, 5, 2)) / 3;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Channel(grey, 5, 5, i), mean);
  EXPECT_EQ(file->GetHistogram().red, colours.red) << "counted before greying, and only once";
}

TEST_F(JpegPicture, IsAveragedOnlyIfAskedFor) {
  test::Picture lines = test::PaintPlain(64, 64, 0);
  for (std::size_t i = 0; i < lines.rgb.size(); ++i) {
    if (i / 3 % 64 % 4 < 2) lines.rgb[i] = '\xff';  // two white columns, two black ones
  }
  const auto file = Open(EncodeJpeg(lines, {.quality = 100}));
  // Five eighths are decoded to a grid that the lines do not fit.
  const auto fast = file->GetBitmap({33, 33}, {}), fine = file->GetBitmap({33, 33}, {.highQuality = true});
  EXPECT_EQ(fast.width, fine.width);
  EXPECT_NE(fast.data, fine.data);
  EXPECT_EQ(file->GetBitmap({64, 64}, {}).data, file->GetBitmap({64, 64}, {.highQuality = true}).data);
}

TEST_F(JpegPicture, IsTurnedOnlyIfAskedFor) {
  auto halves = test::PaintPlain(64, 32, 0x202020);
  for (int y = 0; y < 32; ++y) halves.rgb.replace(static_cast<std::size_t>(y) * 64 * 3, 96, 96, '\xe0');  // left: light
  const auto bytes = test::WithExif(EncodeJpeg(halves), {.orientation = 6});
  const auto plain = Open(bytes)->GetPixels();
  EXPECT_EQ(plain.width, 64);
  EXPECT_EQ(plain.stride, 64);
  const auto file = Open(bytes, {.useJpegExifOrientation = true});
  const auto turned = file->GetPixels();
  EXPECT_EQ(turned.width, 32);
  EXPECT_GT(Channel(turned, 5, 5, 0), 200) << "the left side is on top";
  EXPECT_LT(Channel(turned, 5, 60, 0), 60);
  const auto bitmap = file->GetBitmap({64, 16}, {});
  EXPECT_EQ(bitmap.width, 8);
  EXPECT_EQ(bitmap.height, 16);
}

TEST_F(JpegPicture, RefusalsNameTheFile) {
  const auto reason = [&](const std::string& bytes) { return test::Refusal([&] { Open(bytes)->GetPixels(); }); };
  const auto path = dir_ / "a.jpg";
  EXPECT_EQ(reason("GIF89a"), "Unable to read image:\n" + path + "\nNot a JPEG file: starts with 0x47 0x49");
  EXPECT_EQ(reason(""), "Unable to read image:\n" + path + "\nEmpty input file");
  const auto huge = test::WithClaimedSize(EncodeJpeg(test::PaintPlain(8, 8, 0)), 20000, 20000);
  EXPECT_EQ(reason(huge), "Unable to read image:\n" + path + "\nThe picture is too large");
  EXPECT_EQ(Open(huge)->GetBitmap({100, 100}, {}).width, 100) << "scaled while decoding it may be that large";
}

TEST_F(JpegPicture, OnlyForFilesThatAreThere) {
  EXPECT_EQ(CreateImageFile(dir_ / "missing.jpg", {}), nullptr);
  EXPECT_EQ(CreateImageFile(dir_.Write("a.doc", ""), {}), nullptr);
  const auto pipe = dir_ / "pipe.jpg";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THROW(CreateImageFile(pipe, {})->GetPixels(), platform::UserError);
}

TEST(ImageFile, CannotMakeAMissingFileWritable) {
  const test::TempDir dir;
  const auto path = dir.Write("a.jpg", "x");
  const auto file = CreateImageFile(path, {});
  ASSERT_EQ(std::remove(path.c_str()), 0);
  EXPECT_FALSE(file->MakeWritable());
}

TEST(ImageFile, GivesCommentsOfTheFormatsThatHaveThem) {
  const test::TempDir dir;
  auto tiff = test::ExifDirectories({.make = "Tarnwick"});
  tiff.Directory(34665, test::TiffBuilder().Undefined(37510, std::string("ASCII\0\0\0A comment ", 18)));
  const auto jpeg = "\xff\xd8" + test::ExifSegment(tiff) + "\xff\xd9";
  EXPECT_EQ(CreateImageFile(dir.Write("a.jpg", jpeg), {})->GetComment(), "A comment");
  EXPECT_EQ(CreateImageFile(dir.Write("a.jpg", jpeg), {})->GetExifComment(), "A comment");
  EXPECT_EQ(CreateImageFile(dir.Write("a.orf", tiff.Build()), {})->GetComment(), "A comment");
  EXPECT_EQ(CreateImageFile(dir.Write("a.pef", tiff.Build()), {})->GetComment(), "") << "it refuses comments";
  EXPECT_EQ(CreateImageFile(dir.Write("a.gif", "no picture"), {})->GetComment(), "");
}

}  // namespace
}  // namespace ml::imagefiles
