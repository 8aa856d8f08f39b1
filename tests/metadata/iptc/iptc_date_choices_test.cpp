#include "metadata/iptc/iptc_date_choices.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "metadata/iptc/iptc_dates.h"
#include "platform/file_status.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

constexpr std::int64_t kFileTime = 1'046'000'000;  // 2003-02-23 11:33:20 UTC

class IptcDateChoices : public testing::Test {
 protected:
  IptcDateChoices() {
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
  }
  std::string Photo(const std::string& date) {
    std::string jpeg = "\xff\xd8\xff\xd9";
    if (!date.empty()) jpeg = test::WithExif(jpeg, {.model = "Tarnwick", .dateTime = date});
    auto path = dir.Write("a.jpg", jpeg);
    platform::SetModificationTime(path, kFileTime * 1'000'000'000);
    return path;
  }

  test::TempDir dir;
};

TEST_F(IptcDateChoices, KnowsTheTimeOfTheShotFromThatOfTheFile) {
  const auto shot = [&](const std::string& date) { return ShotTimeOf(ExifData(Photo(date))); };
  EXPECT_EQ(IptcDate(shot("2003:05:17 10:11:12")), "20030517");
  EXPECT_EQ(shot(""), 0);
  EXPECT_EQ(shot("0000:00:00 00:00:00"), 0);
  EXPECT_EQ(FileTimeOf(ExifData(Photo(""))), kFileTime);
  EXPECT_EQ(FileTimeOf(ExifData(dir / "gone.jpg")), 0);
}

TEST_F(IptcDateChoices, DaysKeepTheTimeOfDay) {
  constexpr std::time_t kBeforeSummerTime = 1'048'928'400;  // 2003-03-29 10:00:00 in Berlin
  EXPECT_EQ(IptcTime(DaysFrom(kBeforeSummerTime, 1)), "100000+0200");
  EXPECT_EQ(IptcDate(DaysFrom(kBeforeSummerTime, 14)), "20030412");
  EXPECT_EQ(IptcDate(DaysFrom(kBeforeSummerTime, -2)), "20030327");
}

}  // namespace
}  // namespace ml::metadata
