#include "platform/name_pieces.h"

#include <gtest/gtest.h>

namespace ml::platform {
namespace {

TEST(NamePieces, RunsOfDigits) {
  struct Case {
    const char *name, *first, *last, *lastBehindTheFirstCharacter;
  };
  constexpr Case kCases[] = {
      {"IMG_0123b4", "0123", "4", "4"},
      {"0123", "0123", "0123", "123"},
      {"4", "4", "4", ""},
      {"7abc", "7", "7", ""},
      {"_12x", "12", "12", "12"},
      {"name", "", "", ""},
      {"", "", "", ""},
      {"12a", "12", "12", "2"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(FirstDigits(c.name), c.first) << c.name;
    EXPECT_EQ(LastDigits(c.name, FirstCharacter::Counts), c.last) << c.name;
    EXPECT_EQ(LastDigits(c.name, FirstCharacter::NeverCounts), c.lastBehindTheFirstCharacter) << c.name;
  }
}

TEST(NamePieces, RangesCountCharacters) {
  struct Case {
    const char *name, *range, *piece;
  };
  constexpr Case kCases[] = {
      {"IMG_1234", "2-3", "MG"},
      {"IMG_1234", "-4", "1234"},
      {"IMG_1234", "5", "1"},
      {"IMG_1234", "9-12", ""},
      {"IMG_1234", "8-12", "4"},
      {"IMG_1234", "8-", "4"},
      {"IMG_1234", "9-", ""},
      {"IMG_1234", "1-", "IMG_1234"},
      {"IMG_1234", "-99", "IMG_1234"},
      {"IMG_1234", "-99999999999", "IMG_1234"},
      {"IMG_1234", "1-99999999999", "IMG_1234"},
      {"IMG_1234", "0-3", ""},
      {"IMG_1234", "0", ""},
      {"IMG_1234", "9", ""},
      {"IMG_1234", "3-2", ""},
      {"IMG_1234", "-0", ""},
      {"IMG_1234", "--3", ""},
      {"IMG_1234", "", ""},
      {"IMG_1234", "-", ""},
      {"IMG_1234", "x", ""},
      {"\u00C4\u20ACb", "1-2", "\u00C4\u20AC"},
      {"\u00C4\u20ACb", "-2", "\u20ACb"},
      {"a\xC4\xC4z", "2", "\xC4"},
      {"a\xC4\xC4z", "3-", "\xC4z"},
      {"", "1-2", ""},
  };
  for (const auto& c : kCases) EXPECT_EQ(NamePiece(c.name, c.range), c.piece) << c.name << " " << c.range;
}

TEST(NamePieces, AreTakenFromTheStyleAndPutIntoTheText) {
  const auto in = [](const char* style) { return ReplaceNamePieces(style, style, "IMG_1234"); };
  EXPECT_EQ(in("a%[1-3]b%[-2]c%[1-3]"), "aIMGb34cIMG");
  EXPECT_EQ(in("%[2"), "%[2");
  EXPECT_EQ(in("%[2]%["), "M%[");
  EXPECT_EQ(in("[2] %2"), "[2] %2");
  EXPECT_EQ(ReplaceNamePieces("%[1] %[2]", "%[2]", "IMG"), "%[1] M") << "only what the style names";
}

}  // namespace
}  // namespace ml::platform
