#include "imaging/magick/magick_decoder.h"

#include <gtest/gtest.h>

#include <thread>

#include "imaging/decoding.h"
#include "support/bmp_builder.h"
#include "support/gif_builder.h"
#include "support/indexed_picture.h"
#include "support/picture_tiff.h"

namespace ml::imaging {
namespace {

using test::Endian;
using test::Samples;
using test::TiffEncoding;
using namespace std::string_literals;

test::Decoder As(MagickFormat format) {
  return [format](const auto& source) { return DecodeMagick(source, format); };
}
const auto kTiff = As(MagickFormat::Tiff), kGif = As(MagickFormat::Gif), kBmp = As(MagickFormat::Bmp);

TEST(DecodeMagick, EverySampleOfATiff) {
  const auto picture = test::PaintLandscape(35, 22, 2);
  for (const TiffEncoding& encoding :
       {TiffEncoding{}, TiffEncoding{.order = Endian::Big, .bits = 16}, TiffEncoding{.planar = true, .rowsPerStrip = 5},
        TiffEncoding{.bits = 16, .planar = true}}) {
    const auto decoded = test::Decode(kTiff, PictureDirectory(picture, encoding).Build());
    test::ExpectSamples(decoded.pixels, picture.rgb);
    EXPECT_FALSE(decoded.damaged);
    EXPECT_EQ(decoded.fullWidth, 35);
    EXPECT_EQ(decoded.fullHeight, 22);
  }
  const auto grey = test::Decode(kTiff, PictureDirectory(picture, {.bits = 16, .grey = true}).Build());
  const auto green = static_cast<unsigned char>(picture.rgb[(35 * 9 + 7) * 3 + 1]);
  EXPECT_EQ(test::PixelAt(grey.pixels, 7, 9), (std::array<int, 3>{green, green, green}));
}

test::TiffBuilder FourSamples(int photometric, const std::string& samples, int width) {
  test::TiffBuilder tiff;
  tiff.Long(256, static_cast<std::uint32_t>(width)).Long(257, 1).Short(258, {8, 8, 8, 8}).Short(259, 1);
  tiff.Short(262, static_cast<std::uint32_t>(photometric)).Pieces(273, 279, {samples}).Short(277, 4).Short(278, 1);
  return tiff;
}

TEST(DecodeMagick, InksAndTransparencyOfATiff) {
  const auto inks = test::Decode(kTiff, FourSamples(5, "\0\x80\xff\0\0\x80\xff\xff\0\0\0\x80"s, 3).Build());
  EXPECT_EQ(Samples(inks.pixels), "\xff\x7f\0\0\0\0\x7f\x7f\x7f"s);
  const auto alpha =
      test::Decode(kTiff, FourSamples(2, "\x10\x20\x30\xff\x10\x20\x30\0\0\0\0\x80"s, 3).Short(338, 2).Build());
  EXPECT_EQ(Samples(alpha.pixels), "\x10\x20\x30\xff\xff\xff\x7f\x7f\x7f"s);
}

TEST(DecodeMagick, FirstFrameOfAGif) {
  const auto first = test::PaintLandscape(33, 20, 2), second = test::PaintPlain(33, 20, 0x336699);
  test::ExpectSamples(test::Decode(kGif, test::EncodeGif({first})).pixels, test::ToIndexed(first).Rgb());
  test::ExpectSamples(test::Decode(kGif, test::EncodeGif({first, second})).pixels, test::ToIndexed(first).Rgb());
}

TEST(DecodeMagick, BmpWhateverItsFourthByte) {
  const auto picture = test::PaintLandscape(31, 18, 2);
  for (const auto rows : {test::RowOrder::BottomUp, test::RowOrder::TopDown}) {
    test::ExpectSamples(test::Decode(kBmp, test::EncodeBmp(picture, {.rows = rows})).pixels, picture.rgb);
  }
  test::ExpectSamples(test::Decode(kBmp, test::EncodeBmp(picture, {.colours = test::BmpColours::Palette})).pixels,
                      test::ToIndexed(picture).Rgb());
  const auto wide =
      "BM\x3e\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\2\0\0\0\1\0\0\0\1\0\x20\0"s + std::string(24, '\0') + "abc\0def\xff"s;
  EXPECT_EQ(Samples(test::Decode(kBmp, wide).pixels), "cbafed");
}

TEST(DecodeMagick, RefusesWithAReasonAndInSilence) {
  const auto picture = test::PaintLandscape(64, 48, 2);
  const auto tiff = PictureDirectory(picture).Build(), gif = test::EncodeGif({picture}), bmp = test::EncodeBmp(picture);
  const auto huge = PictureDirectory(picture).Without(256).Without(257).Long(256, 20'000).Long(257, 20'000).Build();
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(test::Refusal(kTiff, ""), "The file is empty");
  for (const auto& [decoder, other] : {std::pair(kTiff, gif), std::pair(kGif, bmp), std::pair(kBmp, tiff)}) {
    const auto reason = test::Refusal(decoder, other);
    EXPECT_NE(reason, "decoded") << "no guessing from the content";
    EXPECT_NE(reason, "");
  }
  EXPECT_NE(test::Refusal(kTiff, huge), "decoded");
  for (const auto& [decoder, bytes] : {std::pair(kTiff, tiff), std::pair(kGif, gif), std::pair(kBmp, bmp)}) {
    EXPECT_NE(test::Refusal(decoder, bytes.substr(0, 20)), "decoded");
    for (std::size_t size = 1; size < bytes.size(); size += 173) test::Refusal(decoder, bytes.substr(0, size));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(DecodeMagick, OnSeveralThreadsAtOnce) {
  const auto picture = test::PaintLandscape(120, 90, 2);
  const auto bytes = PictureDirectory(picture).Build();
  std::vector<std::string> results(4);
  {
    std::vector<std::jthread> threads;
    for (auto& result : results) {
      threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i) result = Samples(test::Decode(kTiff, bytes).pixels);
      });
    }
  }
  for (const auto& result : results) EXPECT_EQ(result, picture.rgb);
}

}  // namespace
}  // namespace ml::imaging
