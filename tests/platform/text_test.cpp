#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ml::platform {
namespace {

TEST(Text, ShowsUtf8AsItIsAndOtherBytesAsWindows1252) {
  EXPECT_EQ(ToDisplayUtf8("\u00C4hre"), "\u00C4hre");
  EXPECT_EQ(ToDisplayUtf8("\xC4hre \x80 \x93"), "\u00C4hre \u20AC \u201C");
  EXPECT_EQ(ToDisplayUtf8("a\x81z"), "a\uFFFDz");
  for (int byte = 0; byte < 256; ++byte)
    EXPECT_TRUE(IsValidUtf8(ToDisplayUtf8(std::string(2, static_cast<char>(byte)))));
}

TEST(Text, ShowsNamesOnOneLine) {
  EXPECT_EQ(ToDisplayLine("new\nli\tne\x1B\x7F.jpg"), "new li ne  .jpg");
  EXPECT_EQ(ToDisplayLine("\u00C4\u0085\u00A0"), "\u00C4 \u00A0");
  EXPECT_EQ(ToDisplayLine("\xC4\n"), "\u00C4 ");
}

TEST(Text, RefusesBrokenUtf8) {
  for (const char* broken : {"\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\x80",
                             "\xE2\x82", "\xE2(\xA1"}) {
    EXPECT_FALSE(IsValidUtf8(broken));
  }
  EXPECT_TRUE(IsValidUtf8("\xF4\x8F\xBF\xBF"));
}

TEST(Text, CountsAndCutsCharactersNotBytes) {
  const std::string text = "a\u00E4\u20AC\xFFz";  // 1 + 2 + 3 + a broken byte + 1
  EXPECT_EQ(CodePointCount(text), 5U);
  EXPECT_EQ(FirstCodePoints(text, 3), "a\u00E4\u20AC");
  EXPECT_EQ(FirstCodePoints(text, 9), text);
  EXPECT_EQ(CutToBytes(text, 5), "a\u00E4");
  EXPECT_EQ(CutToBytes(text, 6), "a\u00E4\u20AC");
}

TEST(Text, SplitsLinesAtBothLineEnds) {
  EXPECT_EQ(SplitLines("a\r\nb\n\nc\r"), (std::vector<std::string_view>{"a", "b", "", "c\r"}));
  EXPECT_TRUE(SplitLines("").empty());
}

TEST(Text, ReplacingNeverLooksAtWhatItPutIn) {
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll("x&amp;lt;", "&amp;", "&"), "x&lt;");
}

TEST(Text, HexRefusesOddAndForeignDigits) {
  std::string bytes;
  EXPECT_TRUE(FromHex("00fFA9", bytes));
  EXPECT_EQ(bytes, std::string("\0\xFF\xA9", 3));
  EXPECT_EQ(ToHex(bytes), "00FFA9");
  EXPECT_FALSE(FromHex("0", bytes));
  EXPECT_FALSE(FromHex("0g", bytes));
}

}  // namespace
}  // namespace ml::platform
