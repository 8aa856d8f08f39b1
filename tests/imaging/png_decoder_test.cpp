#include "imaging/png/png_decoder.h"

#include <gtest/gtest.h>

#include "imaging/decoding.h"
#include "support/indexed_picture.h"
#include "support/png_builder.h"

namespace ml::imaging {
namespace {

using test::EncodePng;
using test::PngChunk;
using test::PngColours;
using test::Samples;
using namespace std::string_literals;

std::string Grey(const test::Picture& picture) {
  std::string out;
  for (std::size_t at = 1; at < picture.rgb.size(); at += 3) out.append(3, picture.rgb[at]);
  return out;
}
TEST(DecodePng, EverySampleOfEveryKind) {
  const auto picture = test::PaintLandscape(37, 23, 4);
  for (const int bits : {8, 16}) {
    test::ExpectSamples(test::Decode(DecodePng, EncodePng(picture, {.bits = bits})).pixels, picture.rgb);
    const auto grey = test::Decode(DecodePng, EncodePng(picture, {.colours = PngColours::Grey, .bits = bits}));
    test::ExpectSamples(grey.pixels, Grey(picture));
    EXPECT_FALSE(grey.damaged);
    EXPECT_EQ(grey.fullWidth, 37);
    EXPECT_EQ(grey.fullHeight, 23);
  }
  test::ExpectSamples(test::Decode(DecodePng, EncodePng(picture, {.colours = PngColours::Palette})).pixels,
                      test::ToIndexed(picture).Rgb());
}

TEST(DecodePng, ShowsTransparencyOverWhiteWhateverTheGamma) {
  const auto picture = test::PaintPlain(8, 1, 0x2080c0);
  const auto gamma = PngChunk("gAMA", "\0\0\xb1\x8f"s);
  for (const int bits : {8, 16}) {
    const auto fade = test::Decode(
        DecodePng, EncodePng(picture, {.colours = PngColours::RgbWithAlpha, .bits = bits, .before = gamma}));
    EXPECT_EQ(test::PixelAt(fade.pixels, 4, 0), (std::array{0x20, 0x80, 0xc0})) << "opaque";
    const auto half = test::PixelAt(fade.pixels, 6, 0);  // the alpha is 128 there
    EXPECT_NEAR(half[0], 143, 1);
    EXPECT_NEAR(half[1], 191, 1);
    EXPECT_NEAR(half[2], 223, 1);
  }
}

/// Four colours of two bits each, of which the second cannot be seen and the third half, in rows x + 2y.
std::string InterlacedPng() {
  // Stored, not compressed: head, rows of the seven passes, checksum.
  const auto pixels = "\x78\x01\x01\x18\0\xe7\xff"s +
                      "\0\0\0\0\0\0\0\x80\0\x80\0\x20\0\x70\0\x70\0\x70\0\xb1\x80\0\xb1\x80"s + "\x24\xdf\x04\xd3"s;
  return "\x89PNG\r\n\x1a\n" + PngChunk("IHDR", "\0\0\0\x05\0\0\0\x05\x02\x03\0\0\x01"s) +
         PngChunk("PLTE", "\xff\0\0\0\xff\0\0\0\xff\x0a\x14\x1e"s) + PngChunk("tRNS", "\xff\0\x80"s) +
         PngChunk("IDAT", pixels) + PngChunk("IEND", "");
}

TEST(DecodePng, InterlacedWithATransparentPalette) {
  const auto decoded = test::Decode(DecodePng, InterlacedPng());
  const std::array<std::array<int, 3>, 4> shown{{{255, 0, 0}, {255, 255, 255}, {127, 127, 255}, {10, 20, 30}}};
  for (int y = 0; y < 5; ++y) {
    for (int x = 0; x < 5; ++x) {
      EXPECT_EQ(test::PixelAt(decoded.pixels, x, y), shown[static_cast<std::size_t>((x + 2 * y) % 4)]) << x << ' ' << y;
    }
  }
}

TEST(DecodePng, ShowsWhatIsThereOfATruncatedFile) {
  const auto picture = test::PaintLandscape(64, 64, 5);
  const auto bytes = EncodePng(picture);
  const auto cut = test::Decode(DecodePng, bytes.substr(0, bytes.size() / 2));
  EXPECT_TRUE(cut.damaged);
  EXPECT_EQ(Samples(cut.pixels).substr(0, 64 * 3 * 20), picture.rgb.substr(0, 64 * 3 * 20));
  EXPECT_EQ(test::PixelAt(cut.pixels, 63, 63), (std::array{128, 128, 128}));
  // Twelve bytes of the last chunk, then the checksums of the pixels.
  EXPECT_GT(test::SweepPrefixes(DecodePng, bytes, bytes.size() - 200, 61), 20);
}

TEST(DecodePng, RefusesWithAReason) {
  EXPECT_EQ(test::Refusal(DecodePng, ""), "The file ends too early");
  EXPECT_EQ(test::Refusal(DecodePng, "no PNG at all"), "Not a PNG file");
  const auto claim = [](const std::string& size) {
    return test::Refusal(DecodePng, "\x89PNG\r\n\x1a\n" + PngChunk("IHDR", size + "\x08\x02\0\0\0"s) +
                                        PngChunk("IDAT", "\x78\x01"s) + PngChunk("IEND", ""));
  };
  EXPECT_EQ(claim("\0\0\x4e\x20\0\0\x4e\x20"s), "The picture is too large");
  EXPECT_EQ(claim("\0\0\x75\x31\0\0\0\x01"s), "Invalid IHDR data");
  EXPECT_NE(claim("\0\0\0\x04\0\0\0\x04"s), "decoded");
}

}  // namespace
}  // namespace ml::imaging
