#include "metadata/png_chunks.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/png_builder.h"

namespace ml::metadata {
namespace {

using test::Compression;
using test::PngChunk;

std::string Png(const std::string& before, const std::string& after = {}) {
  return test::EncodePng(test::PaintPlain(3, 2, 0x808080), {.before = before, .after = after});
}
PngInfo Info(const std::string& file) {
  const auto info = ReadPngInfo(SourceOf(file));
  EXPECT_TRUE(info);
  return info.value_or(PngInfo{});
}
std::string Texts(const std::string& file) {
  std::string all;
  for (const auto& text : Info(file).texts) all += text.key + "=" + text.value + ";";
  return all;
}

TEST(PngInfoTest, HeaderTellsSizeAndSamples) {
  const auto picture = test::PaintPlain(5, 7, 0xff0000);
  const auto info = Info(test::EncodePng(picture, {.colours = test::PngColours::Grey, .bits = 16}));
  EXPECT_EQ(std::tuple(info.width, info.height, info.bitDepth, info.colourType, info.interlaced),
            std::tuple(5, 7, 16, 0, false));
}

TEST(PngInfoTest, TextsOfEveryKindInFileOrder) {
  const auto file = Png(test::PngText("Source", "EOS") + test::PngCompressedText("Exif", "packed"),
                        test::PngInternationalText("Title", "\xc3\xa4", Compression::None) +
                            test::PngInternationalText("Author", "\xc3\xb6", Compression::Deflate) +
                            test::PngText("Source", "again"));
  EXPECT_EQ(Texts(file), "Source=EOS;Exif=packed;Title=\xc3\xa4;Author=\xc3\xb6;Source=again;");
  ASSERT_NE(Info(file).FindText("Source"), nullptr);
  EXPECT_EQ(*Info(file).FindText("Source"), "EOS");
  EXPECT_EQ(Info(file).FindText("source"), nullptr);
}

TEST(PngInfoTest, BrokenTextsAreLeftOut) {
  const std::string zero(1, '\0');
  const std::string broken[] = {
      PngChunk("tEXt", "no terminator"),
      PngChunk("tEXt", zero + "no key"),
      PngChunk("tEXt", std::string(80, 'k') + zero + "long key"),
      PngChunk("zTXt", "key" + zero + "\1method"),
      PngChunk("zTXt", "key" + zero + zero + "no stream"),
      PngChunk("zTXt", "key" + zero),
      PngChunk("iTXt", "key" + zero + "\1\1" + zero + zero + "x"),
      PngChunk("iTXt", "key" + zero + zero + zero + "language only"),
  };
  for (const auto& chunk : broken) EXPECT_EQ(Texts(Png(chunk + test::PngText("a", "b"))), "a=b;");
}

TEST(PngInfoTest, TextsThatUnpackTooFarAreLeftOut) {
  const std::string mebibyte(1 << 20, 'x');
  EXPECT_EQ(Info(Png(test::PngCompressedText("k", mebibyte))).texts.size(), 1U);
  EXPECT_EQ(Info(Png(test::PngCompressedText("k", mebibyte + "x"))).texts.size(), 0U);
  std::string many;
  for (int i = 0; i < 10; ++i) many += test::PngCompressedText("k", mebibyte);
  EXPECT_EQ(Info(Png(many)).texts.size(), 8U);
}

TEST(PngProfileTest, ComesFromItsChunkBeforeThePixels) {
  const std::string profile(5000, 'p');
  const auto chunk = test::PngProfile("name", profile);
  const auto good = Png(chunk), late = Png("", chunk), none = Png("");
  EXPECT_TRUE(Info(good).hasIccProfile);
  EXPECT_FALSE(Info(none).hasIccProfile);
  const auto read = ReadPngIccProfile(SourceOf(good));
  ASSERT_TRUE(read);
  EXPECT_EQ(TextOf(*read), profile);
  const auto huge = Png(test::PngProfile("bomb", std::string((8 << 20) + 1, 'p')));
  for (const auto& file : {late, none, huge}) EXPECT_FALSE(ReadPngIccProfile(SourceOf(file)));
}

TEST(PngFiles, LyingHeadersAreRefused) {
  const auto file = Png("");
  const std::pair<std::size_t, std::string> changes[] = {
      {1, "X"},                            // signature
      {8, std::string(4, '\xff')},         // length of the header
      {11, std::string(1, '\x0c')},        // the same, a byte too short
      {12, "JHDR"},                        // name of the first chunk
      {16, std::string(4, '\0')},          // width
      {20, std::string("\x80\0\0\0", 4)},  // height
  };
  for (const auto& [at, bytes] : changes) {
    auto changed = file;
    changed.replace(at, bytes.size(), bytes);
    EXPECT_FALSE(ReadPngInfo(SourceOf(changed))) << at;
  }
}

}  // namespace
}  // namespace ml::metadata
