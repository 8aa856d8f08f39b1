#include "metadata/exif_values.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/text.h"

namespace ml::metadata {
namespace {

using namespace std::string_literals;

using platform::AsBytes;
ByteView View(const std::string& text, ByteOrder order = ByteOrder::Little) { return {AsBytes(text), order}; }
IfdEntry Entry(IfdType type, std::uint32_t count, std::uint32_t value) {
  return {.tag = 1, .type = static_cast<std::uint16_t>(type), .count = count, .rawValue = value, .value = value};
}

/// 3/4, -1/3, 5/0, and an infinite distance.
const std::string kRatios =
    "\3\0\0\0\4\0\0\0"s + "\xff\xff\xff\xff\3\0\0\0"s + "\5\0\0\0\0\0\0\0"s + "\xff\xff\xff\xff\1\0\0\0"s;

TEST(ExifRational, MemoryAndFileDifferInCountAndRange) {
  struct Case {
    const char* name;
    IfdEntry entry;
    std::optional<double> inMemory, inFile;
  };
  const Case cases[] = {
      {"plain", Entry(IfdType::Rational, 1, 0), 0.75, 0.75},
      {"signed", Entry(IfdType::SignedRational, 1, 8), -1.0 / 3, -1.0 / 3},
      {"several", Entry(IfdType::Rational, 2, 0), {}, 0.75},
      {"no denominator", Entry(IfdType::Rational, 1, 16), {}, {}},
      {"infinite", Entry(IfdType::Rational, 1, 24), -1.0, -1.0},
      {"another type", Entry(IfdType::Long, 1, 0), {}, {}},
      {"cut", Entry(IfdType::Rational, 1, 25), {}, {}},
      {"outside", Entry(IfdType::Rational, 1, 1000), {}, {}},
  };
  const MemorySource file(AsBytes(kRatios));
  for (const auto& c : cases) {
    EXPECT_EQ(readRational(View(kRatios), c.entry), c.inMemory) << c.name;
    EXPECT_EQ(readIFDrational(file, ByteOrder::Little, c.entry, 0), c.inFile) << c.name;
  }
  EXPECT_EQ(readIFDrational(file, ByteOrder::Little, Entry(IfdType::Rational, 1, 0), 8), -1.0 / 3) << "from a base";
}

TEST(ExifText, MemoryTakesNoShortTextsAndFilesMisreadFourBytes) {
  const auto bytes = "....Tarnwick\0junk"s;
  const MemorySource file(AsBytes(bytes));
  const std::uint32_t inlineAbc = 'A' | 'B' << 8 | 'C' << 16;
  struct Case {
    const char* name;
    IfdEntry entry;
    const char* inMemory;
    const char* inFile;
  };
  const Case cases[] = {
      {"text", Entry(IfdType::Ascii, 9, 4), "Tarnwick", "Tarnwick"},
      {"no end", Entry(IfdType::Ascii, 4, 4), "Tarn", "Tarn"},
      {"another type", Entry(IfdType::Undefined, 9, 4), "", "Tarnwick"},
      {"cut", Entry(IfdType::Ascii, 30, 4), "", "Tarnwick"},
      {"outside", Entry(IfdType::Ascii, 8, 400), "", ""},
      {"three bytes", Entry(IfdType::Ascii, 3, inlineAbc), "", "ABC"},
      {"one byte", Entry(IfdType::Ascii, 1, inlineAbc), "", "A"},
      {"high byte first", Entry(IfdType::Ascii, 3, 'A' << 24 | 'B' << 16), "", ""},
      {"four bytes", Entry(IfdType::Ascii, 4, inlineAbc), "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(readASCII(View(bytes), c.entry), c.inMemory) << c.name;
    EXPECT_EQ(readIFDstring(file, c.entry, 0), c.inFile) << c.name;
  }
  EXPECT_EQ(readIFDstring(file, Entry(IfdType::Ascii, 9, 1), 3), "Tarnwick") << "from a base";
  EXPECT_THROW(readIFDstring(file, Entry(IfdType::Ascii, 4, 0x80000000), 0), ExifException);
  const std::string longText(10'000, 'x');
  EXPECT_EQ(readIFDstring(MemorySource(AsBytes(longText)), Entry(IfdType::Ascii, 10'000, 0), 0).size(), 8191U);
}

TEST(ExifComment, EncodingsAreToldByTheFirstEightBytes) {
  const std::pair<std::string, std::string> cases[] = {
      {"ASCII\0\0\0plain text"s, "plain text"},
      {"ascii\0\0\0plain\0text"s, "plain"},
      {"\0\0\0\0\0\0\0\0undefined"s, "undefined"},
      {"JIS\0\0\0\0\0text"s, ""},
      {"OTHER\0\0\0text"s, "OTHER"},
      {"UNICODE\0h\0i\0"s, "hi"},
      {"Unicode\0\0h\0i"s, "hi"},
      {"UNICODE\0h\0i\0\0\0x\0"s, "hi"},
      {"UNICODE\0plain"s, ""},
      {"UNICODE\0\0\0\0\0"s, ""},
      {"ASCII\0\0\0"s, "ASCII"},
      {"no code at all"s, "no code at all"},
      {"short"s, "short"},
      {""s, ""},
  };
  for (const auto& [field, text] : cases) {
    EXPECT_EQ(CommentText(View(field)), text) << field;
    const auto size = static_cast<std::uint32_t>(field.size());
    EXPECT_EQ(readUserComment(View("...." + field), Entry(IfdType::Undefined, size, 4)), text);
    if (size >= 4) {
      EXPECT_EQ(readIFDcomment(MemorySource(AsBytes(field)), Entry(IfdType::Ascii, size, 0), 0), text);
    }
  }
  EXPECT_EQ(readUserComment(View("text"), Entry(IfdType::Byte, 4, 0)), "");
  EXPECT_EQ(readUserComment(View("text"), Entry(IfdType::Ascii, 5, 0)), "");
  EXPECT_EQ(readIFDcomment(MemorySource({}), Entry(IfdType::Undefined, 2, 'o' | 'k' << 8), 0), "ok");
}

}  // namespace
}  // namespace ml::metadata
