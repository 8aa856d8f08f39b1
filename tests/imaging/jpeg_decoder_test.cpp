#include "imaging/jpeg/jpeg_decoder.h"

#include <gtest/gtest.h>

#include "platform/errors.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"

namespace ml::imaging {
namespace {

using test::EncodeJpeg;
using test::JpegColours;

DecodedJpeg Decode(const std::string& bytes, int eighths = 8, PixelOrder order = PixelOrder::Rgb) {
  const metadata::MemorySource source(std::as_bytes(std::span(bytes)));
  return DecodeJpeg(
      source, 0, [&](int, int) { return eighths; }, order);
}
std::string Refusal(const std::string& bytes, int eighths = 8) {
  try {
    Decode(bytes, eighths);
  } catch (const platform::LibraryError& error) {
    return error.what();
  }
  return "decoded";
}
std::array<int, 3> PixelAt(const PixelBuffer& pixels, int x, int y) {
  const auto* p = pixels.Row(y) + x * 3;
  return {std::to_integer<int>(p[0]), std::to_integer<int>(p[1]), std::to_integer<int>(p[2])};
}
void ExpectNear(std::array<int, 3> actual, std::array<int, 3> expected) {
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], expected[i], 3) << "channel " << i;
}

TEST(JpegScale, Choices) {
  EXPECT_EQ(LeastCoveringEighths(3072, 2048, 160, 106), 1);
  EXPECT_EQ(LeastCoveringEighths(3072, 2048, 384, 256), 1);
  EXPECT_EQ(LeastCoveringEighths(3072, 2048, 385, 256), 2);
  EXPECT_EQ(LeastCoveringEighths(3072, 2048, 3072, 2048), 8);
  EXPECT_EQ(LeastCoveringEighths(1, 1, 1, 1), 1);

  EXPECT_EQ(HalvedEighths(160, 120, 160, 160), 8);
  EXPECT_EQ(HalvedEighths(160, 120, 80, 80), 4);
  EXPECT_EQ(HalvedEighths(640, 200, 160, 160), 2) << "one side twice the box is enough";
  EXPECT_EQ(HalvedEighths(640, 150, 80, 80), 4) << "an odd side ends the halving";
  EXPECT_EQ(HalvedEighths(641, 480, 80, 80), 8);
  EXPECT_EQ(HalvedEighths(6400, 6400, 80, 80), 1);
}

TEST(DecodeJpeg, ColoursOfEveryKindComeOutAsRedGreenBlue) {
  const auto plain = test::PaintPlain(24, 16, 0xc04010);
  for (const auto colours : {JpegColours::YCbCr, JpegColours::CmykAdobe, JpegColours::CmykPlain}) {
    const auto bytes = EncodeJpeg(plain, {.quality = 95, .colours = colours});
    ExpectNear(PixelAt(Decode(bytes).pixels, 20, 9), {0xc0, 0x40, 0x10});
    ExpectNear(PixelAt(Decode(bytes, 2, PixelOrder::Bgr).pixels, 2, 1), {0x10, 0x40, 0xc0});
  }
  ExpectNear(PixelAt(Decode(EncodeJpeg(plain, {.colours = JpegColours::Grey})).pixels, 3, 3), {0x40, 0x40, 0x40});
}

TEST(DecodeJpeg, SizesAndScales) {
  const auto bytes = EncodeJpeg(test::PaintLandscape(101, 67, 3));
  const auto half = Decode(bytes, 4);
  EXPECT_EQ(half.fullWidth, 101);
  EXPECT_EQ(half.fullHeight, 67);
  EXPECT_EQ(half.pixels.width, 51);
  EXPECT_EQ(half.pixels.height, 34);
  EXPECT_FALSE(half.damaged);
  const auto one = Decode(EncodeJpeg(test::PaintPlain(1, 1, 0xffffff)), 1);
  EXPECT_EQ(one.pixels.data.size(), 3U);
  EXPECT_FALSE(Decode(EncodeJpeg(test::PaintLandscape(64, 64, 3), {.progressive = true})).damaged);
}

TEST(DecodeJpeg, ShowsATruncatedPictureAsFarAsItGoes) {
  const auto picture = test::PaintLandscape(320, 240, 5);
  const auto bytes = EncodeJpeg(picture);
  const auto whole = Decode(bytes), cut = Decode(bytes.substr(0, bytes.size() * 2 / 3));
  EXPECT_TRUE(cut.damaged);
  EXPECT_EQ(PixelAt(cut.pixels, 100, 50), PixelAt(whole.pixels, 100, 50));
  EXPECT_NE(PixelAt(cut.pixels, 100, 235), PixelAt(whole.pixels, 100, 235));
  EXPECT_TRUE(Decode(EncodeJpeg(picture, {.progressive = true}).substr(0, bytes.size() / 3)).damaged);
}

TEST(DecodeJpeg, RefusesWithAReason) {
  const auto bytes = EncodeJpeg(test::PaintLandscape(64, 48, 5));
  EXPECT_EQ(Refusal(""), "Empty input file");
  EXPECT_EQ(Refusal("no JPEG at all"), "Not a JPEG file: starts with 0x6e 0x6f");
  EXPECT_NE(Refusal(bytes.substr(0, 100)), "decoded");
  EXPECT_EQ(Refusal(test::WithClaimedSize(bytes, 30000, 20000), 1), "The picture is too large");
  EXPECT_EQ(Refusal(test::WithClaimedSize(bytes, 12000, 9000), 8), "The picture is too large");
  EXPECT_EQ(Refusal(test::WithClaimedSize(bytes, 12000, 9000), 1), "decoded");
  const auto progressive = EncodeJpeg(test::PaintLandscape(64, 48, 5), {.progressive = true});
  EXPECT_EQ(Refusal(test::WithClaimedSize(progressive, 12000, 9000), 1), "The picture is too large");
}

TEST(DecodeJpeg, RefusesEndlessScans) {
  auto bytes = EncodeJpeg(test::PaintLandscape(64, 48, 5), {.progressive = true});
  // The last scan over and over.
  const auto scan = bytes.substr(bytes.rfind("\xff\xda"), bytes.size() - 2 - bytes.rfind("\xff\xda"));
  bytes.resize(bytes.size() - 2);
  for (int i = 0; i < 300; ++i) bytes += scan;
  EXPECT_EQ(Refusal(bytes + "\xff\xd9"), "The picture has too many scans");
}

TEST(DecodeJpeg, EveryPrefixGivesAPictureOrAReason) {
  for (const bool progressive : {false, true}) {
    const auto bytes = EncodeJpeg(test::PaintLandscape(160, 120, 7), {.quality = 70, .progressive = progressive});
    for (std::size_t size = 0; size < bytes.size(); size += size < 1024 ? 1 : 97) {
      try {
        EXPECT_TRUE(Decode(bytes.substr(0, size), 4).damaged) << size;
      } catch (const platform::LibraryError& error) {
        EXPECT_STRNE(error.what(), "") << size;
      }
    }
  }
}

}  // namespace
}  // namespace ml::imaging
