#include "platform/font_record.h"

#include <gtest/gtest.h>

#include <string>

namespace ml::platform {
namespace {

TEST(FontRecord, DefaultFontsHaveTheStatedBytes) {
  const auto font = FontRecord::FromPoints("Arial", 10);  // 10 points at 96 dpi: 13.33 pixels
  EXPECT_EQ(font.Hex().substr(0, 8), "F3FFFFFF");
  EXPECT_EQ(font.Hex().substr(32, 8), "90010000");
  EXPECT_EQ(font.Hex().substr(56, 12), "417269616C00");
  EXPECT_EQ(FontRecord::FromPoints("Arial", 7).Height(), -9);
}

TEST(FontRecord, KeepsBytesItDoesNotUnderstand) {
  std::string hex;
  for (int i = 0; i < 60; ++i) hex += i % 2 == 0 ? "a5" : "0F";
  FontRecord font;
  ASSERT_TRUE(font.SetHex(hex));
  font.SetItalic(true);
  auto expected = hex;
  for (auto& c : expected) c = static_cast<char>(std::toupper(c));
  expected.replace(40, 2, "01");
  EXPECT_EQ(font.Hex(), expected);
  EXPECT_FALSE(font.SetHex(hex.substr(2)));
  EXPECT_EQ(font.Hex(), expected);
}

TEST(FontRecord, CutsLongNamesBetweenCharacters) {
  FontRecord font;
  font.SetFace(std::string(30, 'x') + "\u00E4");  // the two-byte letter would need byte 32
  EXPECT_EQ(font.Face(), std::string(30, 'x'));
}

TEST(FontRecord, MulDivRoundsHalfAwayFromZero) {
  EXPECT_EQ(mulDiv(1, 1, 2), 1);
  EXPECT_EQ(mulDiv(-1, 1, 2), -1);
  EXPECT_EQ(mulDiv(7, 96, 72), 9);
  EXPECT_EQ(mulDiv(2'000'000'000, 3, 4), 1'500'000'000);
}

}  // namespace
}  // namespace ml::platform
