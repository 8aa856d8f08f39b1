#include "rawconvert/raw_develop_params.h"

#include <gtest/gtest.h>

#include <map>

namespace ml::rawconvert {
namespace {

/// The bytes that are not zero.
std::map<std::size_t, int> Set(const RawDevelopParams& params) {
  std::map<std::size_t, int> bytes;
  for (std::size_t i = 0; i < params.Data().size(); ++i) {
    if (params.Data()[i] != std::byte{}) bytes[i] = std::to_integer<int>(params.Data()[i]);
  }
  return bytes;
}

TEST(RawDevelopParams, LiesInMemoryAsTheEngineTakesIt) {
  RawDevelopParams params;
  EXPECT_EQ(params.Data().size(), 284U);
  params.SetHeader();
  params.SetLinear(true);
  params.SetContrast(-10);
  params.SetSaturation(2);
  params.SetSharpness(3);
  params.SetFalseColourFilter(false);
  params.SetTone(-2);
  params.SetExposureCompensation(-20);
  params.SetWhiteBalance(-1);
  params.SetCustomPoint({0x12345, 7});
  params.SetPhotoEffect(-1);
  params.SetColourSpace(-10);
  const std::map<std::size_t, int> expected = {{2, 1},     {6, 1},     {8, 0xF6},   {9, 0xFF},  {10, 2},    {12, 3},
                                               {14, 0xFF}, {15, 0xFF}, {16, 0xFE},  {17, 0xFF}, {20, 0xEC}, {21, 0xFF},
                                               {40, 0xFF}, {41, 0xFF}, {42, 1},     {44, 0x45}, {45, 0x23}, {46, 1},
                                               {48, 7},    {156, 255}, {158, 0xF6}, {159, 0xFF}};
  EXPECT_EQ(Set(params), expected);
  EXPECT_EQ(params.Contrast(), -10);
  EXPECT_EQ(params.CustomPoint(), (WhitePoint{0x12345, 7}));
  EXPECT_EQ(params.PhotoEffect(), -1);
}

TEST(RawDevelopParams, ForgetsOnlyWhatWasComputed) {
  RawDevelopParams params;
  params.SetCustomPoint({3, 4});
  params.SetPhotoEffect(4);
  auto computed = params;
  computed.SetCoefficients({{2, 1, 1.5F, 1}});
  EXPECT_EQ(computed.Coefficients().multipliers[2], 1.5F);
  computed.ClearComputed();
  EXPECT_EQ(computed, params);
}

}  // namespace
}  // namespace ml::rawconvert
