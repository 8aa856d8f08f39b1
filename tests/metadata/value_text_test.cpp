#include "metadata/value_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace ml::metadata {
namespace {

TEST(ValueText, StopsAreWholeNumbersAndTheThreeFractions) {
  const std::pair<double, const char*> cases[] = {
      {0, "0"},    {0.009, "0"}, {-0.009, "0"},       {0.33, "+1/3"}, {-1.5, "-1 1/2"},
      {2, "+2"},   {-3, "-3"},   {5.0 / 3, "+1 2/3"}, {0.7, "+2/3"},  {0.2, "+"},
      {-0.9, "-"}, {1.2, "+1"},  {0.54, "+1/2"},      {0.01, "+"},
  };
  for (const auto& [stops, text] : cases) EXPECT_EQ(FormatStops(stops), text) << stops;
}

TEST(ValueText, ShutterTimesTurnIntoSecondsAtThreeTenths) {
  const std::pair<double, const char*> cases[] = {
      {0.25, "1/4"},
      {0.3, "0.3"},
      {0.299, "1/3"},
      {0.004, "1/250"},
      {1.0 / 3, "0.333333"},
      {30, "30"},
      {1.3, "1.3"},
      {0, ""},
      {-1, ""},
      {1e-9, "1/1000000000"},
      {std::numeric_limits<double>::quiet_NaN(), ""},
  };
  for (const auto& [seconds, text] : cases) EXPECT_EQ(ShutterText(seconds), text) << seconds;
}

TEST(ValueText, DistancesLoseDecimalsWithTheirLength) {
  const std::pair<double, const char*> cases[] = {
      {0.001, ""}, {0.0021, "0.002"}, {0.2994, "0.299"}, {0.3, "0.30"},   {5.994, "5.99"},
      {6, "6.0"},  {19.94, "19.9"},   {20, "20"},        {655.35, "655"}, {-1, ""},
  };
  for (const auto& [metres, text] : cases) EXPECT_EQ(DistanceText(metres), text) << metres;
  EXPECT_EQ(ApertureText(2.75), "2.8");
  EXPECT_EQ(ApertureText(0), "");
}

TEST(ValueText, ImageNumbersAreDirectoryAndFile) {
  EXPECT_EQ(ImageNumberText(1030314), "103-0314");
  EXPECT_EQ(ImageNumberText(42), "000-0042");
  EXPECT_EQ(ImageNumberText(31030314), "103-0314");
  EXPECT_EQ(ImageNumberText(0), "");
}

TEST(ValueText, FileSizesFollowTheDecimalSeparatorOfTheLocale) {
  constexpr std::uint64_t kKilo = 1024, kMega = kKilo * kKilo;
  struct Case {
    std::uint64_t bytes;
    const char* point;
    const char* comma;
  };
  const Case cases[] = {
      {0, "0KB", "0KB"},
      {512, "0KB", "0KB"},
      {513, "1KB", "1KB"},
      {1023 * kKilo, "1023KB", "1023KB"},
      {1024 * kKilo, "1,024KB", "1024KB"},
      {10'239 * kKilo, "10,239KB", "10239KB"},
      {10'240 * kKilo, "10.0MB", "10.0MB"},
      {102'399 * kKilo, "100.0MB", "100.0MB"},
      {100 * kMega, "100MB", "100MB"},
      {6 * kKilo * kMega, "6,144MB", "6144MB"},
  };
  const platform::LocaleText point, comma{.decimalSeparator = ",", .thousandsSeparator = "."};
  for (const auto& c : cases) {
    EXPECT_EQ(FormatFileSize(c.bytes, point), c.point) << c.bytes;
    EXPECT_EQ(FormatFileSize(c.bytes, comma), c.comma) << c.bytes;
  }
}

}  // namespace
}  // namespace ml::metadata
