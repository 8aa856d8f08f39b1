#include "metadata/ifd.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text.h"

namespace ml::metadata {
namespace {

using platform::AsBytes;

std::string Little(std::uint32_t value, int width) {
  std::string out;
  for (int i = 0; i < width; ++i) out += static_cast<char>(value >> 8 * i & 0xff);
  return out;
}
/// A directory of longs: the tags, each with itself as value, and the link.
std::string Directory(const std::vector<std::uint32_t>& tags, std::uint32_t next) {
  std::string out = Little(static_cast<std::uint32_t>(tags.size()), 2);
  for (const auto tag : tags) out += Little(tag, 2) + Little(4, 2) + Little(1, 4) + Little(tag, 4);
  return out + Little(next, 4);
}

/// The tags that a walk from offset 8 visits, in front of them "!" if it threw.
std::string Walked(const std::string& file, const IfdPolicy& policy = {}) {
  const MemorySource source(AsBytes(file));
  std::string tags;
  IfdWalker walker(source, ByteOrder::Little, policy);
  try {
    walker.Walk(8, [&](const IfdEntry& entry) {
      EXPECT_EQ(entry.value, entry.tag);
      tags += std::to_string(entry.tag) + " ";
      return entry.tag == 99 ? Visit::Stop : Visit::Continue;
    });
  } catch (ExifException) {
    tags.insert(0, "!");
  }
  return tags;
}

const std::string kHeader = "II*" + std::string(1, '\0') + Little(8, 4);

TEST(IfdWalker, FollowsTheChainAndLeavesCyclesAndNonsense) {
  EXPECT_EQ(Walked(kHeader + Directory({1, 2}, 0)), "1 2 ");
  EXPECT_EQ(Walked(kHeader + Directory({1}, 26) + Directory({2}, 0)), "1 2 ");
  EXPECT_EQ(Walked(kHeader + Directory({1}, 26) + Directory({2}, 0), {.followNext = false}), "1 ");
  EXPECT_EQ(Walked(kHeader + Directory({1}, 26) + Directory({2}, 8)), "1 2 ") << "a cycle of two";
  EXPECT_EQ(Walked(kHeader + Directory({1}, 8)), "1 ") << "a cycle of one";
  EXPECT_EQ(Walked(kHeader + Directory({1, 99, 2}, 26)), "1 99 ") << "stopped by the visitor";
  EXPECT_EQ(Walked(kHeader + Directory({1}, 0xffffffff)), "!1 ") << "a link out of the file";
  EXPECT_EQ(Walked(kHeader + Directory({}, 14) + Directory({5}, 0)), "5 ") << "an empty directory";
}

TEST(IfdWalker, CutDirectoriesAndLimits) {
  const auto whole = kHeader + Directory({1, 2, 3}, 0);
  const auto noLink = whole.substr(0, whole.size() - 4), cut = whole.substr(0, whole.size() - 4 - 5);
  EXPECT_EQ(Walked(noLink), "1 2 3 ");
  EXPECT_EQ(Walked(cut), "!1 2 ");
  EXPECT_EQ(Walked(cut, {.visitCutDirectory = false}), "!");
  EXPECT_EQ(Walked(whole, {.maxEntries = 3}), "1 2 3 ");
  EXPECT_EQ(Walked(whole, {.maxEntries = 2}), "!");
  EXPECT_EQ(Walked(std::string(4, 'x') + kHeader + Directory({7}, 0), {.base = 4}), "7 ");
  EXPECT_EQ(Walked(kHeader), "!");

  std::string chain = kHeader;
  for (std::uint32_t i = 1; i <= 100; ++i) chain += Directory({i}, 8 + 18 * i);
  EXPECT_EQ(Walked(chain).substr(Walked(chain).size() - 6), "31 32 ") << "at most 32 directories";
}

TEST(IfdWalker, SubDirectoriesShareTheMemoryOfPlaces) {
  const auto file = kHeader + Directory({26}, 0) + Directory({8}, 0);  // each holds the other's offset
  const MemorySource source(AsBytes(file));
  IfdWalker walker(source, ByteOrder::Little);
  int visits = 0;
  IfdVisitor descend = [&](const IfdEntry& entry) {
    ++visits;
    return walker.Walk(entry.value, descend);
  };
  walker.Walk(8, descend);
  EXPECT_EQ(visits, 2);
}

TEST(IfdEntry, ASingleShortIsReducedFromEitherEndOfTheValueField) {
  struct Case {
    ByteOrder order;
    std::string bytes;
    std::uint32_t value;
  };
  const Case cases[] = {
      {ByteOrder::Big, std::string("\1\x12\0\3\0\0\0\1\0\6\0\0", 12), 6},
      {ByteOrder::Little, std::string("\x12\1\3\0\1\0\0\0\6\0\x7f\x7f", 12), 6},
      {ByteOrder::Big, std::string("\1\x12\0\3\0\0\0\2\0\6\0\7", 12), 0x60007},
      {ByteOrder::Big, std::string("\1\x12\0\4\0\0\0\1\0\6\0\0", 12), 0x60000},
  };
  for (const auto& c : cases) {
    const auto entry = ReadIfdEntry(ByteView(AsBytes(c.bytes), c.order), 0);
    EXPECT_EQ(entry.tag, 0x112);
    EXPECT_EQ(entry.value, c.value);
  }
}

TEST(TiffHeader, NeedsItsMarksAndEightBytes) {
  const auto read = [](const std::string& text) { return ReadTiffHeader(MemorySource(AsBytes(text)), 0); };
  EXPECT_TRUE(read(kHeader)->IsTiff());
  EXPECT_EQ(read(kHeader)->firstDirectory, 8U);
  EXPECT_EQ(read(std::string("MM\0*\0\0\1\0", 8))->firstDirectory, 256U);
  EXPECT_FALSE(read(std::string("IIRO\x08\0\0\0", 8))->IsTiff());
  EXPECT_FALSE(read(std::string("IM*\0\x08\0\0\0", 8)).has_value());
  EXPECT_FALSE(read(kHeader.substr(0, 7)).has_value());
}

}  // namespace
}  // namespace ml::metadata
