#include "imaging/jp2/jp2_colours.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

#include "imaging/jp2/jp2_cost.h"

namespace ml::imaging {
namespace {

using Ints = std::vector<int>;

struct Plane {
  int width = 2;
  int height = 1;
  std::vector<std::int32_t> samples;
  int bits = 8;
  bool isSigned = false;
  bool opacity = false;
};
Ints Combine(const std::vector<Plane>& planes, Jp2Colours colours = Jp2Colours::Unknown) {
  std::vector<Jp2Component> components;
  for (const auto& plane : planes) {
    components.push_back({plane.width, plane.height, plane.bits, plane.isSigned, plane.opacity, plane.samples.data()});
  }
  Ints values;
  for (const auto value : CombineComponents(components, colours).data) values.push_back(std::to_integer<int>(value));
  return values;
}

TEST(CombineComponents, Depths) {
  EXPECT_EQ(Combine({{.samples = {0x12ff, 0xffff}, .bits = 16}}), (Ints{0x12, 0x12, 0x12, 255, 255, 255}));
  EXPECT_EQ(Combine({{.samples = {0, 1}, .bits = 1}}), (Ints{0, 0, 0, 255, 255, 255}));
  EXPECT_EQ(Combine({{.samples = {-128, 127}, .isSigned = true}}), (Ints{0, 0, 0, 255, 255, 255}));
  EXPECT_EQ(Combine({{.samples = {-5, 300}}}), (Ints{0, 0, 0, 255, 255, 255})) << "outside of the range";
  EXPECT_EQ(Combine({{.samples = {0, 0x7fffffff}, .bits = 31}}), (Ints{0, 0, 0, 255, 255, 255}));
}

TEST(CombineComponents, ColourSpaces) {
  const Plane a{.samples = {255, 0}}, b{.samples = {128, 0}}, c{.samples = {0, 0}}, d{.samples = {51, 0}};
  EXPECT_EQ(Combine({a, b, c}), (Ints{255, 128, 0, 0, 0, 0}));
  EXPECT_EQ(Combine({a, b, c}, Jp2Colours::Grey), (Ints{255, 255, 255, 0, 0, 0}));
  EXPECT_EQ(Combine({a, b}), (Ints{255, 255, 255, 0, 0, 0})) << "too few for colours";
  EXPECT_EQ(Combine({a, b, c, d}, Jp2Colours::Cmyk), (Ints{0, 102, 204, 255, 255, 255}));
  EXPECT_EQ(Combine({{.samples = {76, 150}}, {.samples = {85, 44}}, {.samples = {255, 21}}}, Jp2Colours::Ycc),
            (Ints{254, 0, 0, 0, 255, 1}));
}

TEST(CombineComponents, SmallerSecondComponentMeansColourDifferences) {
  const Plane luma{.width = 3, .height = 3, .samples = {10, 20, 30, 40, 50, 60, 70, 80, 90}};
  const Plane plain{.width = 2, .height = 2, .samples = {128, 128, 128, 128}};
  const Plane red{.width = 2, .height = 2, .samples = {128, 128, 128, 228}};
  const auto pixels = Combine({luma, plain, red});
  ASSERT_EQ(pixels.size(), 27U);
  EXPECT_EQ(pixels[12], 50) << "the middle belongs to the first sample";
  EXPECT_EQ(pixels[24], 90 + 140) << "the corner to the last";
  EXPECT_EQ(pixels[26], 90);
}

TEST(CombineComponents, ShowsTransparencyOverWhite) {
  const Plane grey{.samples = {100, 100}}, fade{.samples = {0, 128}, .opacity = true};
  EXPECT_EQ(Combine({grey, fade}), (Ints{255, 255, 255, 177, 177, 177}));
  EXPECT_EQ(Combine({fade}), (Ints{0, 0, 0, 128, 128, 128})) << "nothing else to show";
}

TEST(ReadJp2Tile, TakesTheCodingOfEachComponent) {
  using namespace std::string_literals;
  const auto stream =
      "\xff\x4f"
      "\xff\x51\0\x2c\0\0\0\0\1\x2c\0\0\0\xc8\0\0\0\x64\0\0\0\0\0\0\1\0\0\0\1\0\0\0\0\0\0\0\0\0\0\2"
      "\7\1\1\7\2\2"
      "\xff\x52\0\x0c\0\0\0\5\1\1\4\3\0\1"
      "\xff\x53\0\x0b\1\1\1\2\2\0\1\x87\x98"
      "\xff\x90"s;
  const auto tile = ReadJp2Tile(metadata::MemorySource(std::as_bytes(std::span(stream))), 0);
  EXPECT_EQ(tile.width, 200) << "of 300 the first 100 are left out";
  EXPECT_EQ(tile.height, 200);
  EXPECT_EQ(tile.layers, 5);
  ASSERT_EQ(tile.components.size(), 2U);
  const auto &first = tile.components[0], &second = tile.components[1];
  EXPECT_EQ(first.stepX, 1);
  EXPECT_EQ(first.blockWidth, 6);
  EXPECT_EQ(first.blockHeight, 5);
  ASSERT_EQ(first.precincts.size(), 2U);
  EXPECT_EQ(first.precincts[1].width, 15);
  EXPECT_EQ(second.stepY, 2);
  EXPECT_EQ(second.blockWidth, 4);
  EXPECT_EQ(second.precincts[0].width, 7);
  EXPECT_EQ(second.precincts[1].height, 9);
}

TEST(IsBearable, BoundsPiecesAndPackets) {
  const auto tile = [](int block, int precinct, long long layers) {
    const Jp2Coding coding{.blockWidth = block, .blockHeight = block, .precincts = {{15, 15}, {precinct, precinct}}};
    return Jp2Tile{8000, 8000, layers, {coding, coding, coding}};
  };
  EXPECT_TRUE(IsBearable(tile(6, 15, 65'535)));
  EXPECT_TRUE(IsBearable(tile(5, 8, 20)));
  EXPECT_FALSE(IsBearable(tile(2, 15, 1))) << "blocks of four pixels";
  EXPECT_FALSE(IsBearable(tile(6, 2, 1))) << "blocks are no larger than precincts";
  EXPECT_FALSE(IsBearable(tile(6, 0, 1)));
  EXPECT_FALSE(IsBearable(tile(6, 8, 65'535)));
}

}  // namespace
}  // namespace ml::imaging
