#include "imaging/dib/bmp_turn.h"

#include <gtest/gtest.h>

#include <string>

#include "imaging/magick/magick_decoder.h"
#include "imaging/scale.h"
#include "metadata/bmp_size.h"
#include "platform/errors.h"
#include "support/bmp_builder.h"
#include "support/byte_string.h"
#include "support/temp_dir.h"

namespace ml::imaging {
namespace {

using Bytes = std::vector<std::byte>;

Bytes ToBytes(const std::string& text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}
PixelBuffer Decode(const Bytes& bmp) { return DecodeMagick(metadata::MemorySource(bmp), MagickFormat::Bmp).pixels; }
std::uint32_t LongAt(const Bytes& bmp, std::size_t at) {
  return metadata::ByteView(bmp, metadata::ByteOrder::Little).readLong(at);
}

/// 5 by 3 pixels of these bits, palette or masks behind the header as they are told.
std::string SmallBmp(int bits, int compression, const std::string& behindHeader, const std::string& pixels) {
  test::ByteString out(test::Endian::Little);
  out.Text("BM").Long(54 + behindHeader.size() + pixels.size()).Long(0).Long(54 + behindHeader.size());
  out.Long(40).Long(5).Long(3).Short(1).Short(static_cast<unsigned>(bits)).Long(static_cast<unsigned>(compression));
  out.Long(pixels.size()).Long(1000).Long(2000).Long(0).Long(0);
  return out.Text(behindHeader).Text(pixels).Take();
}

std::string Colours(int count) {
  std::string palette;
  for (int i = 0; i < count; ++i) palette += std::string{char(i * 9), char(255 - i * 9), char(i * 5), '\0'};
  return palette;
}

std::vector<std::pair<std::string, std::string>> Bitmaps() {
  const auto picture = test::PaintLandscape(37, 23, 5);
  std::vector<std::pair<std::string, std::string>> bitmaps = {
      {"24", EncodeBmp(picture)},
      {"24 from the top", EncodeBmp(picture, {.rows = test::RowOrder::TopDown})},
      {"8", EncodeBmp(picture, {.colours = test::BmpColours::Palette})},
      {"1", SmallBmp(1, 0, Colours(2), std::string("\xa8\0\0\0\x50\0\0\0\xc8\0\0\0", 12))},
      {"4", SmallBmp(4, 0, Colours(16), std::string("\x01\x23\x40\0\x56\x78\x90\0\xab\xcd\xe0\0", 12))},
      {"16", SmallBmp(16, 0, "", std::string("ABCDEFGHIJ\0\0KLMNOPQRST\0\0UVWXYZabcd\0\0", 36))},
      {"16 with masks", SmallBmp(16, 3, std::string("\0\xf8\0\0\xe0\x07\0\0\x1f\0\0\0", 12),
                                 std::string("ABCDEFGHIJ\0\0KLMNOPQRST\0\0UVWXYZabcd\0\0", 36))},
  };
  if (const auto samples = test::SamplesDir()) {
    for (const auto* name : {"pal4-rle.bmp", "pal8-os2.bmp", "pal8-topdown.bmp", "rgb24.bmp"}) {
      bitmaps.emplace_back(name, *test::ReadAll(*samples + "/gif-bmp/" + name));
    }
  }
  return bitmaps;
}

TEST(TurnBmp, TurnsEveryKindAsAnotherDecoderSeesIt) {
  for (const auto& [name, text] : Bitmaps()) {
    const auto bmp = ToBytes(text);
    const auto before = metadata::ReadBmpSize(metadata::MemorySource(bmp));
    for (const auto turn : {Turn::cw90, Turn::half, Turn::cw270}) {
      const auto turned = TurnBmp(bmp, turn);
      const auto after = metadata::ReadBmpSize(metadata::MemorySource(turned));
      EXPECT_EQ(after->bitsPerPixel, before->bitsPerPixel) << name;
      EXPECT_EQ(after->topDown, before->topDown) << name;
      EXPECT_EQ(LongAt(turned, 2), turned.size()) << name;
      const auto wanted = Turned(Decode(bmp), turn), got = Decode(turned);
      EXPECT_TRUE(got.width == wanted.width && got.height == wanted.height) << name;
      EXPECT_EQ(got.data, wanted.data) << name << " turned by " << static_cast<int>(turn);
    }
    auto round = bmp;
    for (int i = 0; i < 4; ++i) round = TurnBmp(round, Turn::cw90);
    EXPECT_EQ(round == bmp, name != "pal4-rle.bmp") << name << ": only run lengths are gone";
  }
}

TEST(TurnBmp, TakesResolutionsAndProfileAlong) {
  const auto turned = TurnBmp(ToBytes(SmallBmp(24, 0, "", std::string(48, 'x'))), Turn::cw90);
  EXPECT_EQ(LongAt(turned, 38), 2000U);
  EXPECT_EQ(LongAt(turned, 42), 1000U);

  // A long header with a profile behind the pixels; 5 rows of 12 bytes become of 3 rows of 16.
  auto file = SmallBmp(24, 0, std::string(84, '\0'), std::string(48, 'x'));
  file[14] = 124;
  file[14 + 112] = static_cast<char>(124 + 48);
  file[14 + 116] = 7;
  const auto behind = TurnBmp(ToBytes(file + "PROFILE"), Turn::cw90);
  const auto place = 14 + LongAt(behind, 14 + 112);
  EXPECT_EQ(std::string(metadata::ByteView(behind, metadata::ByteOrder::Little).Text(place, 7)), "PROFILE");
}

TEST(TurnBmp, RefusesWhatIsNotWhole) {
  const auto whole = EncodeBmp(test::PaintPlain(16, 16, 0x336699));
  auto huge = whole, packed = whole, strange = whole;
  huge[20] = huge[24] = 0x7f;
  packed[30] = 4;
  strange[28] = 7;
  const std::string cases[] = {"",
                               "BM",
                               whole.substr(0, 40),
                               whole.substr(0, whole.size() - 1),
                               huge,
                               packed,
                               strange,
                               SmallBmp(8, 1, Colours(256), std::string("\x05\x01\0\x02", 4))};
  for (const auto& bytes : cases) EXPECT_THROW(TurnBmp(ToBytes(bytes), Turn::cw90), platform::LibraryError);
}

}  // namespace
}  // namespace ml::imaging
