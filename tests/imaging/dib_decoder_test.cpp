#include "imaging/dib/dib_decoder.h"

#include <gtest/gtest.h>

#include "imaging/decoding.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "metadata/riff.h"
#include "support/avi_builder.h"
#include "support/bmp_builder.h"
#include "support/indexed_picture.h"

namespace ml::imaging {
namespace {

using test::BmpColours;
using test::Samples;
using namespace std::string_literals;

metadata::ByteView View(const std::string& bytes) {
  return {std::as_bytes(std::span(bytes)), metadata::ByteOrder::Little};
}
DecodedPicture Decode(const std::string& format, const std::string& rows) {
  return DecodeDib(View(format), View(rows));
}
std::string Header(const std::string& width, const std::string& height, int bits) {
  return "\x28\0\0\0"s + width + height + "\1\0"s + static_cast<char>(bits) + std::string(25, '\0');
}

TEST(DecodeDib, EverySampleInEitherOrderOfRows) {
  const auto picture = test::PaintLandscape(37, 11, 8);
  for (const auto rows : {test::RowOrder::BottomUp, test::RowOrder::TopDown}) {
    const auto header = test::DibHeader(picture, {.rows = rows});
    test::ExpectSamples(Decode(header, test::DibRows(picture, {.rows = rows})).pixels, picture.rgb);
    const test::BmpEncoding indexed{.colours = BmpColours::Palette, .rows = rows};
    test::ExpectSamples(Decode(test::DibHeader(picture, indexed), test::DibRows(picture, indexed)).pixels,
                        test::ToIndexed(picture).Rgb());
  }
}

TEST(DecodeDib, OtherDepths) {
  const auto two = "\2\0\0\0"s, one = "\1\0\0\0"s;
  EXPECT_EQ(Samples(Decode(Header(two, one, 16), "\x1f\x7c\xf0\x01"s).pixels), "\xff\0\xff\0\x7b\x84"s);
  EXPECT_EQ(Samples(Decode(Header(two, one, 32), "abc\0def\xff"s).pixels), "cbafed");
  EXPECT_EQ(Samples(Decode(Header(two, one, 8) + "abc\0"s, "\0\1  "s).pixels), "cba\0\0\0"s) << "no second colour";
}

TEST(DecodeDib, CutAndImpossible) {
  const auto cut = Decode(Header("\1\0\0\0"s, "\3\0\0\0"s, 24), "abc def");
  EXPECT_TRUE(cut.damaged);
  EXPECT_EQ(Samples(cut.pixels),
            "\x80\x80\x80\x80\x80\x80"
            "cba"s);
  const auto refuse = [](const std::string& format, const std::string& rows) {
    return test::Refusal([&](const auto&) { return Decode(format, rows); }, "");
  };
  EXPECT_EQ(refuse("short", "abcd"), "The bitmap header is cut short");
  EXPECT_EQ(refuse(Header("\1\0\0\0"s, "\1\0\0\0"s, 24), "abc"), "The bitmap has no pixels");
  EXPECT_EQ(refuse(Header("\1\0\0\0"s, "\1\0\0\0"s, 4), "abcd"), "Bitmaps of this depth are not read");
  EXPECT_EQ(refuse(Header("\xff\xff\xff\xff"s, "\1\0\0\0"s, 24), "abcd"), "The picture has no pixels");
  EXPECT_EQ(refuse(Header("\xff\xff\xff\x7f"s, "\0\0\0\x80"s, 24), "abcd"), "The picture is too large");
}

TEST(AviFrames, PlainRowsAndJpegWithoutTables) {
  const auto picture = test::PaintLandscape(48, 32, 9);
  const auto plain = test::EncodeAvi({picture}, {.frames = test::AviFrames::Dib});
  const metadata::MemorySource source(std::as_bytes(std::span(plain)));
  const auto avi = metadata::ReadAviFile(source);
  ASSERT_TRUE(avi && avi->IsPlain());
  const auto part = [&](const metadata::FileRange& range) { return plain.substr(range.position, range.size); };
  test::ExpectSamples(Decode(part(avi->format), part(avi->firstFrame)).pixels, picture.rgb);

  const auto decode = [](const auto& bytes) {
    return DecodeJpeg(
        bytes, 0, [](int, int) { return 8; }, PixelOrder::Rgb);
  };
  const auto whole = test::EncodeJpeg(picture), bare = test::WithoutHuffmanTables(whole);
  ASSERT_LT(bare.size(), whole.size());
  test::ExpectSamples(test::Decode(decode, bare).pixels, Samples(test::Decode(decode, whole).pixels));
  EXPECT_FALSE(test::Decode(decode, bare).damaged);
}

}  // namespace
}  // namespace ml::imaging
