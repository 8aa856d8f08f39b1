#include "metadata/iptc/iptc_block.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_png_text.h"
#include "metadata/memory.h"
#include "platform/text.h"
#include "support/metadata_blocks.h"

namespace ml::metadata {
namespace {

using namespace std::string_literals;
using Items = std::vector<IptcItem>;

constexpr auto kBare = IptcCarrier::Bare, kResource = IptcCarrier::Resource;

IptcBlock Parse(const std::string& bytes, IptcCarrier carrier = kBare) {
  return ParseIptcBlock(ByteView(platform::AsBytes(bytes), ByteOrder::Little), carrier);
}

const std::string kVersion = "\x1c\2\0\0\2\0\2"s;
const std::string kEncoding = test::IptcBlock({{.dataset = 90, .value = "\x1b%G", .record = 1}});

TEST(IptcBlock, ListsDatasetsInFileOrder) {
  const auto bytes = "junk" + kVersion + test::IptcBlock({{25, "b"}, {120, "c"}, {25, "a"}, {5, ""}}) + "junk" +
                     test::IptcBlock({{200, "unknown"}});
  const Items expected = {{2, 25, "b"}, {2, 120, "c"}, {2, 25, "a"}, {2, 200, "unknown"}};
  EXPECT_EQ(Parse(bytes).items, expected);
  EXPECT_EQ(Parse(bytes, kResource).items, expected);
  EXPECT_EQ(Parse(bytes).surroundings, IptcSurroundings());
}

TEST(IptcBlock, OnlyBareBlocksLoseBinaryValues) {
  const auto bytes = kEncoding + test::IptcBlock({{120, "\x1f text"}, {5, " "}});
  EXPECT_EQ(Parse(bytes).items, (Items{{1, 90, "\x1b%G"}, {2, 5, " "}}));
  EXPECT_EQ(Parse(bytes, kResource).items, (Items{{1, 90, "\x1b%G"}, {2, 120, "\x1f text"}, {2, 5, " "}}));
}

TEST(IptcBlock, LyingLengthsCostOnlyWhatComesBehind) {
  const auto sound = test::IptcBlock({{5, "name"}});
  struct Case {
    const char* name;
    std::string tail;
    Items more;
    bool kept;
  };
  const Case cases[] = {
      {"cut value", "\x1c\2\x78\0\x20"s + "cut", {{2, 120, "cut"}}, false},
      {"cut head", "\x1c\2\x78\0"s, {}, false},
      {"extended", "\x1c\2\x78\x80\4\0\0\0\1"s + "x" + sound, {}, true},
      {"other extended bit", "\x1c\2\x78\x40\1"s + "x" + sound, {}, true},
  };
  for (const auto& c : cases) {
    auto expected = Items{{2, 5, "name"}};
    expected.insert(expected.end(), c.more.begin(), c.more.end());
    const auto block = Parse(sound + c.tail);
    EXPECT_EQ(block.items, expected) << c.name;
    EXPECT_EQ(block.surroundings.tail, c.kept ? c.tail : "") << c.name;
  }
}

TEST(IptcBlock, WritesVersionItemsAndPadding) {
  const IptcBlock block{.items = {{2, 0, "\0\4"s}, {2, 25, ""}, {2, 5, "odd"}, {2, 120, "\0x"s}, {3, 10, "x"}}};
  const auto name = test::IptcBlock({{5, "odd"}}), zero = test::IptcBlock({{120, "\0x"s}});
  EXPECT_EQ(TextOf(BuildIptcBlock(block, kBare)), kVersion + name + "\0"s);
  EXPECT_EQ(TextOf(BuildIptcBlock(block, kResource)), kVersion + name + zero);
  EXPECT_TRUE(BuildIptcBlock({.items = {{2, 25, ""}}}, kBare).empty());
  EXPECT_TRUE(BuildIptcBlock({}, kResource).empty());
}

TEST(IptcBlock, OnlyValuesThatHaveAFormAreWritten) {
  const std::string longest(16'383, 'x');
  const IptcBlock block{.items = {{2, 120, longest + "x"}, {2, 120, longest}, {2, 5, std::string(70'000, 'y')}}};
  EXPECT_EQ(Parse(TextOf(BuildIptcBlock(block, kBare))).items, (Items{{2, 120, longest}}));
}

TEST(IptcBlock, OtherRecordsAndExtendedDatasetsAreWrittenBack) {
  const auto digest = test::IptcBlock({{.dataset = 10, .value = "", .record = 7}});
  const auto extended = "\x1c\2\x78\x80\4\0\0\0\1x"s;
  auto block = Parse(kVersion + test::IptcBlock({{5, "old"}}) + kEncoding + digest + extended, kResource);
  block.items = {{2, 5, "new"}};
  EXPECT_EQ(TextOf(BuildIptcBlock(block, kResource)),
            kEncoding + digest + kVersion + test::IptcBlock({{5, "new"}}) + extended);
}

TEST(IptcText, ReadsLinesUpToTheFirstBrokenOne) {
  EXPECT_EQ(ParseIptcText("2:25:3:a\nb\n1:90:3:xyz\n2:120:2:c:\n"), (Items{{2, 25, "a\nb"}, {2, 120, "c:"}}));
  for (const auto* broken : {"2:5:99:short", "2:5:-1:x\n", "2:5:x", "2:5:99999999999:x\n", "\n", "2:5"}) {
    EXPECT_EQ(ParseIptcText("2:25:1:a\n" + std::string(broken) + "2:5:1:b\n"), (Items{{2, 25, "a"}})) << broken;
  }
}

TEST(IptcText, WritesValuesThatCanBeEdited) {
  const std::string longest(10'239, 'x');
  const Items items = {{2, 5, "a:b\n"}, {1, 90, "x"}, {2, 120, longest}, {2, 120, longest + "x"}, {2, 7, ""}};
  EXPECT_EQ(BuildIptcText(items), "2:5:4:a:b\n\n2:120:10239:" + longest + "\n");
}

}  // namespace
}  // namespace ml::metadata
