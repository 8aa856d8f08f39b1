#include "imagefiles/thumbnail_maker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "imagefiles/image_file.h"
#include "metadata/exif_text.h"
#include "metadata/icc_carriers.h"
#include "support/jpeg_builder.h"
#include "support/refusal.h"
#include "support/sample_photo.h"
#include "support/small_files.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

/// The picture is red, its embedded thumbnail (160 x 120 if not told otherwise) blue.
std::string Photo(int orientation = 1, int thumbnailWidth = 160, int thumbnailHeight = 120) {
  const auto thumbnail = EncodeJpeg(test::PaintPlain(thumbnailWidth, thumbnailHeight, 0x0000ff));
  return test::WithExif(EncodeJpeg(test::PaintPlain(600, 400, 0xff0000)),
                        {.orientation = orientation, .thumbnail = thumbnail});
}

struct Case {
  const char* name;
  int size;
  ImageFileOptions options;
  PictureSource source;
  int width, height;
};
class JpegThumbnail : public testing::TestWithParam<Case> {};

TEST_P(JpegThumbnail, ComesFromTheCheapestSource) {
  const auto& c = GetParam();
  const test::TempDir dir;
  const auto made = MakeThumbnail(dir.Write("a.jpg", Photo(6)), c.size, c.options);
  EXPECT_EQ(made.source, c.source);
  EXPECT_EQ(made.pixels.width, c.width);
  EXPECT_EQ(made.pixels.height, c.height);
  EXPECT_EQ(made.pixels.stride, (c.width + 3) / 4 * 4);
  EXPECT_EQ(made.pixels.order, imaging::PixelOrder::Bgr);
  const int blue = std::to_integer<int>(made.pixels.Row(0)[0]), red = std::to_integer<int>(made.pixels.Row(0)[2]);
  EXPECT_EQ(blue > 200 && red < 50, c.source == PictureSource::Exif);
  EXPECT_EQ(red > 200 && blue < 50, c.source == PictureSource::Full);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, JpegThumbnail,
    testing::Values(Case{"Small", 80, {}, PictureSource::Exif, 80, 60},
                    Case{"Largest", 160, {}, PictureSource::Exif, 160, 120},
                    Case{"OverTheLimit", 161, {}, PictureSource::Full, 161, 107},
                    Case{"Odd", 33, {}, PictureSource::Exif, 33, 24},
                    Case{"Ignored", 80, {.ignoreEmbeddedThumbnails = true}, PictureSource::Full, 80, 53},
                    Case{"Turned", 80, {.useJpegExifOrientation = true}, PictureSource::Exif, 60, 80},
                    Case{"TurnedWhole", 240, {.useJpegExifOrientation = true}, PictureSource::Full, 160, 240},
                    Case{"NeverEnlarged", 5000, {}, PictureSource::Full, 600, 400}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(Thumbnail, OfAPictureWhoseEmbeddedOneIsBrokenIsMadeFromThePicture) {
  const test::TempDir dir;
  auto photo = Photo();
  const auto embedded = photo.find("\xff\xd8", 2);
  photo[embedded] = 'x';
  EXPECT_EQ(MakeThumbnail(dir.Write("a.jpg", photo), 80, {}).source, PictureSource::Full);
}

TEST(Thumbnail, RefusalsNameTheFile) {
  const test::TempDir dir;
  const auto reason = [](const std::string& path) { return test::Refusal([&] { MakeThumbnail(path, 80, {}); }); };
  for (const auto& path : {dir / "missing.jpg", dir.Write("a.jpg", "no picture"), dir.Write("b.crw", "no companion"),
                           dir.Write("c.nef", ""), dir.Write("d.txt", ""), dir.Path() + "/dir.jpg"}) {
    EXPECT_NE(reason(path).find(path), std::string::npos) << reason(path);
  }
}

/// Everything that is read of a file: its thumbnail, its picture, its profile and its shooting data.
using Reading = std::tuple<std::vector<std::byte>, std::vector<std::byte>, metadata::IccProfile, std::string>;
Reading ReadAll(const std::string& path) {
  metadata::ExifData exif(path);
  return {MakeThumbnail(path, 12, {}).pixels.data, CreateImageFile(path, {})->GetPixels().data,
          metadata::GetIccProfileData(path).value_or(metadata::IccProfile()), GetPropertiesText(exif, {})};
}

TEST(Reading, IsTheSameOnWhateverThreadItIsDone) {
  const test::TempDir dir;
  std::vector<std::string> paths;
  std::vector<Reading> expected;
  for (const auto& file : test::SmallFiles()) {
    paths.push_back(dir.Write(file.name + "/" + file.file, file.content));
    expected.push_back(ReadAll(paths.back()));
  }
  std::vector<std::jthread> threads;
  for (std::size_t first = 0; first < 4; ++first) {
    threads.emplace_back([&, first] {
      for (std::size_t i = 0; i < paths.size(); ++i) {
        const auto place = (i + first * 3) % paths.size();
        EXPECT_TRUE(ReadAll(paths[place]) == expected[place]) << paths[place];
      }
    });
  }
}

}  // namespace
}  // namespace ml::imagefiles
