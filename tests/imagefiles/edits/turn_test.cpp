#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "imagefiles/edits/jpeg_turn.h"
#include "imagefiles/edits/turned_orientation.h"
#include "imaging/dib/bmp_turn.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/scale.h"
#include "metadata/exif_block.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "support/bmp_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using imaging::Turn;

imaging::DecodedPicture Decode(const std::string& jpeg) {
  const metadata::MemorySource source(platform::AsBytes(jpeg));
  return imaging::DecodeJpeg(
      source, 0, [](int, int) { return 8; }, imaging::PixelOrder::Rgb);
}
/// Of one channel, on average.
double Difference(const imaging::PixelBuffer& one, const imaging::PixelBuffer& other) {
  if (one.width != other.width || one.height != other.height) return 255;
  double sum = 0;
  for (std::size_t i = 0; i < one.data.size(); ++i) {
    sum += std::abs(std::to_integer<int>(one.data[i]) - std::to_integer<int>(other.data[i]));
  }
  return sum / static_cast<double>(one.data.size());
}
constexpr double kRounding = 0.5;

class TurnFiles : public testing::Test {
 protected:
  std::string Path() const { return dir_ / "a.jpg"; }
  std::string Now() const { return *test::ReadAll(Path()); }
  ImageFileOptions Options(bool byOrientation) const {
    return {.useJpegExifOrientation = byOrientation, .preserveModificationTime = false};
  }
  EditTools Tools(const ImageFileOptions& options, CompanionFinder& companions) const {
    return {.options = options, .companions = companions, .edit = {.stateDirectory = dir_ / "state"}};
  }
  /// Rotates the file at Path().
  void TurnFile(imaging::Turn turn, bool byOrientation = false) const {
    const auto options = Options(byOrientation);
    CompanionFinder companions(options);
    Rotate(*CreateImageFile(Path(), options), turn, Tools(options, companions));
  }
  bool Auto() const {
    const auto options = Options(false);
    CompanionFinder companions(options);
    return AutoRotate(*CreateImageFile(Path(), options), Tools(options, companions));
  }
  metadata::ExifData Exif() const { return metadata::ExifData(Path()); }
  test::TempDir dir_;
};

/// EXIF in the given order, sides that differ and an uneven resolution.
test::TiffBuilder Directories(int orientation, test::Endian order) {
  test::TiffBuilder tiff(order), exif(order);
  exif.Long(40962, 96).Short(40963, 64);
  tiff.Short(274, static_cast<std::uint32_t>(orientation)).Rational(282, 300).Rational(283, 150).Short(296, 2);
  return tiff.Directory(34665, exif);
}

std::string Photo(int orientation, test::Endian order = test::Endian::Big) {
  return test::InsertSegments(EncodeJpeg(test::PaintLandscape(96, 64, 9)),
                              test::ExifSegment(Directories(orientation, order)));
}

TEST_F(TurnFiles, ByOrientationNothingElseChanges) {
  const int wanted[][4] = {{1, 6, 3, 8}, {3, 8, 1, 6}, {6, 3, 8, 1}, {8, 1, 6, 3},
                           {2, 6, 3, 8}, {5, 6, 3, 8}, {0, 6, 3, 8}};  // what is no turn counts as upright
  for (const auto order : {test::Endian::Little, test::Endian::Big}) {
    for (const auto& row : wanted) {
      int column = 0;
      for (const auto turn : {Turn::cw90, Turn::half, Turn::cw270}) {
        dir_.Write("a.jpg", Photo(row[0], order));
        TurnFile(turn, true);
        EXPECT_EQ(Now(), Photo(row[++column], order)) << row[0] << " turned by " << static_cast<int>(turn);
      }
    }
  }
}

TEST_F(TurnFiles, WithoutOrientationThePictureIsTurned) {
  dir_.Write("a.jpg", EncodeJpeg(test::PaintLandscape(96, 64, 9)));
  const auto wanted = imaging::Turned(Decode(Now()).pixels, Turn::cw270);
  TurnFile(Turn::cw270, true);
  EXPECT_LT(Difference(Decode(Now()).pixels, wanted), kRounding);
}

TEST_F(TurnFiles, EverySegmentAndWhatStandsBehindThePictureStay) {
  const auto jpeg = EncodeJpeg(test::PaintLandscape(96, 64, 9));
  const auto exif = [](const test::TiffBuilder& tiff) { return test::ExifSegment(tiff); };
  const auto others = test::XmpSegment(test::XmpPacket("text")) + test::IccSegments(test::IccProfile("p"), 2) +
                      test::CommentSegment("a comment");
  const auto jfif = jpeg.substr(2, 18);
  const auto late = test::CommentSegment("behind the tables");
  auto body = jpeg.substr(20);
  body.insert(body.find("\xff\xc0"), late);
  dir_.Write("a.jpg", "\xff\xd8" + exif(Directories(3, test::Endian::Little)) + jfif + others + body + "behind it");
  TurnFile(Turn::cw90);
  const auto now = Now();
  // The two resolutions changed their places by their entries.
  EXPECT_EQ(now.substr(now.find(jfif)).find(jfif + others + late + "\xff\xdb"), 0U);
  EXPECT_TRUE(
      now.ends_with("\xff\xd9"
                    "behind it"));
  const auto data = Exif();
  EXPECT_EQ(data.imageWidth, 64);
  EXPECT_EQ(data.imageHeight, 96);
  EXPECT_EQ(data.orientation, 1);
  EXPECT_FALSE(Decode(now).damaged);
  const metadata::MemorySource source(platform::AsBytes(now));
  const auto thumbnails = metadata::FindExifThumbnails(source);
  ASSERT_EQ(thumbnails.size(), 1U) << "made of the turned picture";
  const auto thumbnail = Decode(now.substr(thumbnails[0]));
  EXPECT_LT(thumbnail.fullWidth, thumbnail.fullHeight);
  for (int i = 0; i < 4; ++i) TurnFile(Turn::cw90);
  EXPECT_EQ(Now().substr(Now().find(jfif)), now.substr(now.find(jfif))) << "four quarters are none";
}

TEST_F(TurnFiles, AutoRotateMakesTheEightOrientationsUpright) {
  // What shows upright, stored as each orientation says.
  const auto upright = Decode(Photo(1)).pixels;
  const imaging::JpegTransform stored[] = {imaging::JpegTransform::None,       imaging::JpegTransform::FlipHorizontal,
                                           imaging::JpegTransform::half,       imaging::JpegTransform::FlipVertical,
                                           imaging::JpegTransform::Transpose,  imaging::JpegTransform::cw270,
                                           imaging::JpegTransform::Transverse, imaging::JpegTransform::cw90};
  const auto plain = EncodeJpeg(test::PaintLandscape(96, 64, 9));
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const auto bytes = imaging::TransformJpeg(platform::AsBytes(plain), stored[orientation - 1]);
    const std::string jpeg(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto photo = test::InsertSegments(jpeg, test::ExifSegment(Directories(orientation, test::Endian::Little)));
    dir_.Write("a.jpg", photo);
    EXPECT_EQ(Auto(), orientation != 1);
    EXPECT_LT(Difference(Decode(Now()).pixels, upright), kRounding) << orientation;
    EXPECT_EQ(Exif().orientation, 1) << orientation;
    EXPECT_FALSE(Auto()) << "it is upright now";
  }
  for (const int orientation : {0, 9}) {
    dir_.Write("a.jpg", Photo(orientation));
    EXPECT_FALSE(Auto());
    EXPECT_EQ(Now(), Photo(orientation));
  }
}

TEST_F(TurnFiles, DamagedFilesAreRefused) {
  const auto photo = Photo(1);
  const std::string broken[] = {photo.substr(0, photo.size() - 200), photo.substr(0, photo.size() - 2), "no picture",
                                std::string()};
  for (const auto& bytes : broken) {
    dir_.Write("a.jpg", bytes);
    EXPECT_THROW(TurnFile(Turn::cw90), platform::UserError);
    EXPECT_EQ(Now(), bytes);
  }
}

TEST_F(TurnFiles, ABitmapIsTurnedInItsFile) {
  const auto path = dir_.Write("b.bmp", EncodeBmp(test::PaintLandscape(31, 20, 2)));
  const auto options = Options(true);
  CompanionFinder companions(options);
  const auto file = CreateImageFile(path, options);
  const auto wanted = imaging::Turned(file->GetPixels(), Turn::cw90);
  Rotate(*file, Turn::cw90, Tools(options, companions));
  EXPECT_EQ(CreateImageFile(path, options)->GetPixels().data, wanted.data);
  dir_.Write("b.bmp", "BM no picture");
  EXPECT_THROW(Rotate(*CreateImageFile(path, options), Turn::cw90, Tools(options, companions)), platform::UserError);
}

TEST_F(TurnFiles, HostileFilesAreRefusedOrTurned) {
  const auto exif = test::ExifSegment(test::ExifDirectories({.orientation = 5, .thumbnail = "thumbnail"}));
  const auto jpeg = test::InsertSegments(EncodeJpeg(test::PaintLandscape(32, 16, 4)), exif + test::CommentSegment("c"));
  const auto bmp = EncodeBmp(test::PaintLandscape(9, 7, 4), {.colours = test::BmpColours::Palette});
  std::mt19937 random(11);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  int turned = 0;
  for (int round = 0; round < 600; ++round) {
    const bool isJpeg = round % 3 != 0;
    auto file = isJpeg ? jpeg : bmp;
    for (std::size_t i = below(4) + 1; i > 0; --i) {
      file[below(round % 2 == 0 ? std::size_t{120} : file.size())] = static_cast<char>(below(256));
    }
    file.resize(file.size() - below(round % 5 == 0 ? file.size() : 1));
    const metadata::MemorySource source(platform::AsBytes(file));
    metadata::EditedFile edited(source);
    try {
      if (isJpeg) {
        TurnByOrientation(edited, Turn::cw90);
        TurnWithoutLoss(edited, imaging::JpegTransform::cw90, nullptr);
      } else {
        imaging::TurnBmp(platform::AsBytes(file), Turn::cw90);
      }
      ++turned;
    } catch (const platform::LibraryError&) {
      continue;
    }
  }
  EXPECT_GT(turned, 50);
}

}  // namespace
}  // namespace ml::imagefiles
