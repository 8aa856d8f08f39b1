#include "imaging/scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

namespace ml::imaging {
namespace {

/// One byte for each pixel, spread over the channels as v, v + 1, v + 2.
PixelBuffer Of(int width, int height, std::initializer_list<int> values) {
  auto buffer = MakePixelBuffer(width, height);
  auto* out = buffer.data.data();
  for (const int value : values) {
    for (int i = 0; i < 3; ++i) *out++ = static_cast<std::byte>(value + i);
  }
  return buffer;
}
std::vector<int> FirstChannels(const PixelBuffer& buffer) {
  std::vector<int> values;
  for (int y = 0; y < buffer.height; ++y) {
    for (int x = 0; x < buffer.width; ++x) values.push_back(std::to_integer<int>(buffer.Row(y)[x * 3]));
  }
  return values;
}
using Ints = std::vector<int>;

TEST(NearestSteps, MoveByErrorAccumulation) {
  EXPECT_EQ(NearestSteps(5, 2), (Ints{0, 3}));
  EXPECT_EQ(NearestSteps(5, 4), (Ints{0, 2, 3, 4}));
  EXPECT_EQ(NearestSteps(7, 3), (Ints{0, 3, 5}));
  EXPECT_EQ(NearestSteps(9, 3), (Ints{0, 3, 6}));
  EXPECT_EQ(NearestSteps(3, 3), (Ints{0, 1, 2}));
  EXPECT_EQ(NearestSteps(100, 1), (Ints{0}));
  for (int source = 1; source <= 60; ++source) {
    for (int target = 1; target <= source; ++target) EXPECT_LT(NearestSteps(source, target).back(), source);
  }
}

TEST(ScaleAverage, WeighsByArea) {
  EXPECT_EQ(FirstChannels(ScaleAverage(Of(2, 2, {10, 20, 30, 40}), 1, 1)), Ints{25});
  EXPECT_EQ(FirstChannels(ScaleAverage(Of(3, 1, {0, 90, 30}), 2, 1)), (Ints{30, 50}));
  EXPECT_EQ(FirstChannels(ScaleAverage(Of(1, 3, {0, 90, 30}), 1, 2)), (Ints{30, 50}));
  const auto same = Of(3, 2, {0, 1, 100, 200, 252, 253});
  EXPECT_EQ(ScaleAverage(same, 3, 2).data, same.data);

  // Whatever the ratio, a plain picture stays plain, up to the brightest value.
  auto plain = MakePixelBuffer(61, 47);
  std::ranges::fill(plain.data, std::byte{255});
  for (int side = 1; side <= 47; ++side) {
    const auto reduced = ScaleAverage(plain, side, 48 - side);
    EXPECT_TRUE(std::ranges::all_of(reduced.data, [](std::byte b) { return b == std::byte{255}; })) << side;
  }
}

TEST(Turned, Clockwise) {
  const auto source = Of(3, 2, {1, 2, 3, 4, 5, 6});
  const auto right = Turned(source, Turn::cw90), half = Turned(source, Turn::half), left = Turned(source, Turn::cw270);
  EXPECT_EQ(right.width, 2);
  EXPECT_EQ(FirstChannels(right), (Ints{4, 1, 5, 2, 6, 3}));
  EXPECT_EQ(FirstChannels(half), (Ints{6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(FirstChannels(left), (Ints{3, 6, 2, 5, 1, 4}));
  EXPECT_EQ(right.Row(0)[1], std::byte{5}) << "channels stay in their order";
}

TEST(ToDisplayLayout, SwapsAndPads) {
  const auto laid = ToDisplayLayout(Of(5, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(laid.stride, 8);
  EXPECT_EQ(laid.data.size(), 48U);
  EXPECT_EQ(laid.Row(1)[0], std::byte{8});
  EXPECT_EQ(laid.Row(1)[2], std::byte{6});
  EXPECT_EQ(laid.Row(0)[15], std::byte{0});
}

}  // namespace
}  // namespace ml::imaging
