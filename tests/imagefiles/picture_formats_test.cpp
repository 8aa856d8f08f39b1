#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "support/avi_builder.h"
#include "support/bmp_builder.h"
#include "support/gif_builder.h"
#include "support/jp2_builder.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/temp_dir.h"

/// Formats whose pixels are the picture itself.
namespace ml::imagefiles {
namespace {

using test::Picture;

struct Case {
  const char* name;
  const char* file;
  std::string (*build)(const Picture& picture);
  int tolerance = 6;
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

const Case kCases[] = {
    {"Jpeg", "a.jpg", [](const Picture& picture) { return EncodeJpeg(picture, {.quality = 98}); }},
    {"Jp2", "a.jp2", [](const Picture& picture) { return EncodeJp2(picture); }},
    {"Jpf", "a.JPF", [](const Picture& picture) { return EncodeJp2(picture); }},
    {"Tiff", "a.tiff", [](const Picture& picture) { return PictureDirectory(picture).Build(); }},
    {"TiffOf16Bits", "a.tif", [](const Picture& picture) { return PictureDirectory(picture, {.bits = 16}).Build(); }},
    {"Psd", "a.psd", [](const Picture& picture) { return EncodePsd(picture, {.packBits = true}); }},
    {"Gif", "a.gif", [](const Picture& picture) { return test::EncodeGif({picture}); }, 60},
    {"Bmp", "a.bmp", [](const Picture& picture) { return EncodeBmp(picture); }},
    {"Png", "a.png", [](const Picture& picture) { return EncodePng(picture); }},
    {"Avi", "a.avi", [](const Picture& picture) { return test::EncodeAvi({picture}); }, 10},
    {"AviPlain", "a.avi",
     [](const Picture& picture) { return test::EncodeAvi({picture}, {.frames = test::AviFrames::Dib}); }},
};

class PlainPicture : public testing::TestWithParam<Case> {
 protected:
  /// Light brown above, blue below.
  static Picture Halves(int width, int height) {
    auto picture = test::PaintPlain(width, height, 0xc86432);
    const auto half = picture.rgb.size() / 2;
    picture.rgb.replace(half, half, test::PaintPlain(width, height, 0x1020a0).rgb.substr(half));
    return picture;
  }
  void ExpectHalves(const imaging::PixelBuffer& pixels) const {
    const auto near = [&](int x, int y, unsigned colour) {
      const bool rgb = pixels.order == imaging::PixelOrder::Rgb;
      for (int i = 0; i < 3; ++i) {
        const int found = std::to_integer<int>(pixels.Row(y)[x * 3 + (rgb ? i : 2 - i)]);
        EXPECT_NEAR(found, static_cast<int>(colour >> (16 - 8 * i) & 0xff), GetParam().tolerance) << x << "," << y;
      }
    };
    near(pixels.width / 2, 2, 0xc86432);
    near(pixels.width / 2, pixels.height - 3, 0x1020a0);
  }
  test::TempDir dir_;
};

TEST_P(PlainPicture, ShowsWholeFittedAndSmall) {
  const auto path = dir_.Write(GetParam().file, GetParam().build(Halves(300, 200)));
  const auto image = CreateImageFile(path, {});
  ASSERT_NE(image, nullptr);
  const auto pixels = image->GetPixels();
  EXPECT_EQ(pixels.width, 300);
  EXPECT_EQ(pixels.height, 200);
  ExpectHalves(pixels);
  EXPECT_EQ(image->Source(), PictureSource::Full);

  const auto bitmap = image->GetBitmap({100, 50}, {});
  EXPECT_EQ(bitmap.width, 75);
  EXPECT_EQ(bitmap.height, 50);
  ExpectHalves(bitmap);
  EXPECT_EQ(image->GetHistogram().pixelCount, 3750U);

  const auto thumbnail = MakeThumbnail(path, 60, {});
  EXPECT_EQ(thumbnail.pixels.width, 60);
  EXPECT_EQ(thumbnail.pixels.height, 40);
  EXPECT_EQ(thumbnail.pixels.stride, 60);
  EXPECT_EQ(thumbnail.pixels.order, imaging::PixelOrder::Bgr);
  ExpectHalves(thumbnail.pixels);
  EXPECT_EQ(thumbnail.source, PictureSource::Full);
}

TEST_P(PlainPicture, IsNeverEnlarged) {
  const auto path = dir_.Write(GetParam().file, GetParam().build(Halves(48, 32)));
  const auto image = CreateImageFile(path, {});
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->GetBitmap({1000, 1000}, {}).width, 48);
  EXPECT_EQ(MakeThumbnail(path, 160, {}).pixels.width, 48);
}

INSTANTIATE_TEST_SUITE_P(Formats, PlainPicture, testing::ValuesIn(kCases),
                         [](const auto& c) { return std::string(c.param.name); });

}  // namespace
}  // namespace ml::imagefiles
