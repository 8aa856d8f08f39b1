#include <gtest/gtest.h>

#include "memory.h"
#include "metadata/bmp_size.h"
#include "metadata/gif_size.h"
#include "support/byte_string.h"

namespace ml::metadata {
namespace {

using test::ByteString;
using test::Endian;

ByteString BmpStart() { return std::move(ByteString(Endian::Little).Text("BM").Zeros(12)); }
std::string Bmp(std::uint32_t width, std::uint32_t height) {
  return BmpStart().Long(40).Long(width).Long(height).Short(1).Short(24).Zeros(24).Take();
}
std::string OldBmp(int width, int height) {
  const auto side = [](int value) { return static_cast<std::uint64_t>(value); };
  return BmpStart().Long(12).Short(side(width)).Short(side(height)).Short(1).Short(8).Take();
}

TEST(BmpSizeTest, EveryHeader) {
  struct Case {
    std::string file;
    int width, height, bits;
    bool topDown;
  };
  const Case cases[] = {{Bmp(127, 64), 127, 64, 24, false},
                        {Bmp(127, static_cast<std::uint32_t>(-64)), 127, 64, 24, true},
                        {OldBmp(127, 64), 127, 64, 8, false},
                        {OldBmp(65535, 40000), 65535, 40000, 8, false}};
  for (const auto& c : cases) {
    const auto size = ReadBmpSize(SourceOf(c.file));
    ASSERT_TRUE(size);
    EXPECT_EQ(std::tuple(size->width, size->height, size->bitsPerPixel, size->topDown),
              std::tuple(c.width, c.height, c.bits, c.topDown));
  }
}

TEST(BmpSizeTest, ImpossibleSizesAndShortFilesAreRefused) {
  const std::string bad[] = {Bmp(0, 5),
                             Bmp(5, 0),
                             Bmp(0x80000000, 5),
                             Bmp(5, 0x80000000),
                             OldBmp(0, 5),
                             BmpStart().Long(13).Zeros(40).Take(),
                             "BM",
                             "",
                             "XX" + Bmp(5, 5).substr(2)};
  for (const auto& file : bad) EXPECT_FALSE(ReadBmpSize(SourceOf(file)));
}

TEST(GifSizeTest, ScreenOfBothVersions) {
  for (const auto* version : {"GIF87a", "GIF89a"}) {
    const auto file = std::string(version) + std::string("\x2c\x01\xc8\0", 4);
    const auto size = ReadGifSize(SourceOf(file));
    ASSERT_TRUE(size);
    EXPECT_EQ(std::pair(size->width, size->height), std::pair(300, 200));
  }
  const std::string bad[] = {std::string("GIF88a\1\0\1\0", 10), std::string("GIF89a\0\0\1\0", 10), "GIF89a\1\1\1"};
  for (const auto& file : bad) {
    EXPECT_FALSE(ReadGifSize(SourceOf(file)));
  }
}

}  // namespace
}  // namespace ml::metadata
