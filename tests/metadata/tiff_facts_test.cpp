#include "metadata/tiff_facts.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/tiff_builder.h"

namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

TEST(TiffFactsTest, ListsOfEveryLengthInEitherByteOrder) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const std::vector<std::uint32_t>& values : {std::vector<std::uint32_t>{7}, {7, 8}, {7, 8, 9}}) {
      TiffBuilder tiff(order);
      tiff.Short(258, values).Short(273, values).Long(279, values).Long(256, 30).Short(257, 20).Short(284, 2);
      const auto file = tiff.Build();
      const auto facts = ReadTiffFacts(SourceOf(file));
      ASSERT_TRUE(facts);
      EXPECT_EQ(facts->bitsPerSample, values);
      EXPECT_EQ(facts->stripOffsets, values);
      EXPECT_EQ(facts->stripByteCounts, values);
      EXPECT_EQ(std::tuple(facts->width, facts->height, facts->planes), std::tuple(30U, 20U, 2U));
    }
  }
}

TEST(TiffFactsTest, DefaultsAndListsOutOfReach) {
  const auto empty = TiffBuilder().Build();
  const auto defaults = ReadTiffFacts(SourceOf(empty));
  ASSERT_TRUE(defaults);
  EXPECT_EQ(std::tuple(defaults->compression, defaults->samplesPerPixel, defaults->rowsPerStrip, defaults->planes),
            std::tuple(1U, 1U, 0xffffffffU, 1U));
  EXPECT_EQ(defaults->bitsPerSample, std::vector<std::uint32_t>{1});
  const auto lying = TiffBuilder().Raw(258, 3, 3, 5000).Raw(273, 4, 0xffffffff, 8).Raw(279, 2, 9, 8).Build();
  const auto facts = ReadTiffFacts(SourceOf(lying));
  ASSERT_TRUE(facts);
  EXPECT_TRUE(facts->bitsPerSample.empty() && facts->stripOffsets.empty() && facts->stripByteCounts.empty());
}

TEST(TiffFactsTest, OtherFilesAreRefused) {
  const auto other = TiffBuilder().Magic(43).Build(), whole = TiffBuilder().Short(256, 1).Build();
  EXPECT_FALSE(ReadTiffFacts(SourceOf(other)));
  const auto cut = whole.substr(0, 8 + 2 + 11);
  EXPECT_FALSE(ReadTiffFacts(SourceOf(cut)));
}

}  // namespace
}  // namespace ml::metadata
