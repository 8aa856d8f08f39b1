#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "platform/dates.h"
#include "platform/locale_text.h"
#include "platform/numbers.h"

namespace ml::platform {
namespace {

struct DateCase {
  const char* text;
  DateForm form;
  const char* expected;  // "" if it must not parse
};

class ParsedDate : public testing::TestWithParam<DateCase> {};

TEST_P(ParsedDate, IsTakenOrRefused) {
  const auto parsed = ParseDateTime(GetParam().text, GetParam().form);
  EXPECT_EQ(parsed ? ExifDateText(*ToTime(*parsed)) : "", GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ParsedDate,
    testing::Values(DateCase{"2003:10:04 12:30:05", DateForm::Exif, "2003:10:04 12:30:05"},
                    DateCase{"2003:10:04 12:30:05.99 xyz", DateForm::Exif, "2003:10:04 12:30:05"},
                    DateCase{"2003: 1: 4  2:30: 5", DateForm::Exif, "2003:01:04 02:30:05"},
                    DateCase{"2003:10:0412:30:05", DateForm::Exif, "2003:10:04 12:30:05"},
                    DateCase{"2003.10.04 12.30.05", DateForm::Exif, ""},
                    DateCase{"2003.10.04 12.30.05", DateForm::DotsAllowed, "2003:10:04 12:30:05"},
                    DateCase{"2003:10:04 12:30", DateForm::Exif, ""},
                    DateCase{"1969:10:04 12:30:05", DateForm::DotsAllowed, ""},
                    DateCase{"2038:01:01 00:00:00", DateForm::Exif, ""},
                    DateCase{"2003:13:01 00:00:00", DateForm::Exif, ""},
                    DateCase{"2003:13:01 00:00:00", DateForm::DotsUnchecked, "2004:01:01 00:00:00"},
                    DateCase{"    :  :     :  :  ", DateForm::Exif, ""}, DateCase{"", DateForm::Exif, ""}));

TEST(Numbers, AreReadAsTheCLibraryReadsThem) {
  EXPECT_EQ(LeadingInteger("  42abc"), 42);
  EXPECT_EQ(LeadingInteger("+7"), 7);
  EXPECT_EQ(LeadingInteger("-3"), -3);
  EXPECT_EQ(LeadingInteger("x"), 0);
  EXPECT_EQ(LeadingInteger("99999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(LeadingInteger("-99999999999"), std::numeric_limits<std::int32_t>::min());
  EXPECT_DOUBLE_EQ(LeadingNumber(" 1.5e1x"), 15.0);
  EXPECT_DOUBLE_EQ(LeadingNumber("1,5"), 1.0);
  EXPECT_DOUBLE_EQ(LeadingNumber(""), 0.0);
}

TEST(Numbers, AreWrittenWithSixDigitsOrExactly) {
  EXPECT_EQ(ShortNumber(0.1), "0.1");
  EXPECT_EQ(ShortNumber(1.0 / 3), "0.333333");
  EXPECT_EQ(ShortNumber(1234567), "1.23457e+06");
  EXPECT_EQ(ShortNumber(2), "2");
  EXPECT_EQ(LeadingNumber(ExactNumber(1.0 / 3)), 1.0 / 3);
}

TEST(LocaleText, WritesTheLongDateInEnglishByDefault) {
  const auto date = ParseDateTime("2001:09:09 03:46:40");
  ASSERT_TRUE(date);
  EXPECT_EQ(LocaleText().LongDate(LocalTime(*ToTime(*date))), "Sunday, September 09, 2001");
}

}  // namespace
}  // namespace ml::platform
