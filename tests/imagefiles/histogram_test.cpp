#include "imagefiles/histogram.h"

#include <gtest/gtest.h>

#include "imagefiles/histogram_curves.h"

namespace ml::imagefiles {
namespace {

Histogram OneColour(int pixels, std::uint8_t r, std::uint8_t g, std::uint8_t b) {
  Histogram counts;
  for (int i = 0; i < pixels; ++i) counts.Add(r, g, b);
  return counts;
}

TEST(Normalise, CutsTheSpikesOfOneColour) {
  const auto got = Normalise(OneColour(1000, 30, 60, 90));
  EXPECT_EQ(got.red[30], 20);
  EXPECT_EQ(got.green[60], 20);
  EXPECT_EQ(got.blue[90], 20);
  EXPECT_EQ(got.combined[30], 20);
  EXPECT_EQ(got.combined[60], 20);
  EXPECT_EQ(got.red[60], 0);
  EXPECT_EQ(got.redPeak, 20);
  EXPECT_EQ(got.combinedPeak, 20);
}

TEST(Normalise, LimitIsAFiftiethCutToAnInteger) {
  struct Case {
    int pixels, limit;
  };
  for (const auto& c : {Case{0, 0}, Case{49, 0}, Case{50, 1}, Case{99, 1}, Case{100, 2}}) {
    const auto got = Normalise(OneColour(c.pixels, 7, 7, 7));
    EXPECT_EQ(got.red[7], c.limit) << c.pixels;
    EXPECT_EQ(got.bluePeak, c.limit) << c.pixels;
    EXPECT_EQ(got.combined[7], c.limit) << c.pixels;
    EXPECT_EQ(got.combinedPeak, c.limit) << c.pixels;
  }
}

/// Seven pixels with a red of 10 are 7 of `red` but 1 of `combined`: 7 / 4. The others only make the limit 10.
TEST(Normalise, FourCountsOfCombinedAreOne) {
  auto counts = OneColour(7, 10, 200, 220);
  for (int i = 0; i < 493; ++i) counts.Add(0, 0, 0);
  const auto got = Normalise(counts);
  EXPECT_EQ(got.red[10], 7);
  EXPECT_EQ(got.combined[10], 1);
  EXPECT_EQ(got.combined[143], 1) << "the mean of the three";
  EXPECT_EQ(got.combined[0], 10);
  EXPECT_EQ(got.greenPeak, 10);
}

TEST(HistogramCurves, ColoursShareOneScale) {
  NormalisedHistogram normal;
  normal.red[0] = 5, normal.green[1] = 8, normal.blue[255] = 3;
  normal.redPeak = 5, normal.greenPeak = 8, normal.bluePeak = 3;
  normal.combined = {9, 3, 2, 1};
  normal.combinedPeak = 9;
  const auto curves = MakeHistogramCurves(normal, {});
  EXPECT_EQ(curves.red.value()[0], 63);
  EXPECT_EQ(curves.red.value()[1], 1);
  EXPECT_EQ(curves.green.value()[1], 101);
  EXPECT_EQ(curves.blue.value()[255], 38);
  EXPECT_EQ(curves.intensity.value()[0], 0) << "no bar over black";
  EXPECT_EQ(curves.intensity.value()[1], 34);
  EXPECT_EQ(curves.intensity.value()[3], 12);
  EXPECT_EQ(curves.intensity.value()[4], 1);
}

TEST(HistogramCurves, LargestCountsDoNotOverflow) {
  NormalisedHistogram normal;
  normal.red[3] = normal.redPeak = 40'000'000;
  EXPECT_EQ(MakeHistogramCurves(normal, {}).red.value()[3], 101);
}

TEST(HistogramCurves, OnlyWhatIsWantedAndThere) {
  const auto normal = Normalise(OneColour(500, 1, 2, 3));
  const auto some = MakeHistogramCurves(normal, {.red = false, .intensity = false});
  EXPECT_FALSE(some.red);
  EXPECT_TRUE(some.green && some.blue);
  EXPECT_FALSE(some.intensity);
  EXPECT_EQ(MakeHistogramCurves(Normalise({}), {}), HistogramCurves{});
  EXPECT_EQ(MakeHistogramCurves(Normalise(OneColour(49, 1, 2, 3)), {}), HistogramCurves{});
}

}  // namespace
}  // namespace ml::imagefiles
