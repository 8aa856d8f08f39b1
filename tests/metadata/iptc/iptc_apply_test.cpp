#include "metadata/iptc/iptc_apply.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "metadata/iptc/iptc_date_choices.h"
#include "metadata/iptc/iptc_dates.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/paths.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;

constexpr std::int64_t kFileTime = 1'046'000'000;  // 2003-02-23 11:33:20 UTC

/// A writer that keeps what it is given instead of writing it.
class Apply : public testing::Test {
 protected:
  Apply() {
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    writer = [this](const ExifData& image, const Items& items) {
      if (image.path == refused) throw platform::UserError("Refused: " + image.path);
      if (image.path == broken) throw platform::UserError("The disk is full");
      written.emplace_back(platform::FileName(image.path), items);
      if (stopAfterFirst) stop.request_stop();
    };
  }

  std::string Photo(const std::string& name, const std::vector<test::IptcEntry>& iptc, const std::string& date) {
    auto jpeg = test::InsertSegments("\xff\xd8\xff\xd9",
                                     test::ResourceSegment(test::ImageResources({{1028, test::IptcBlock(iptc), ""}})));
    if (!date.empty()) jpeg = test::WithExif(jpeg, {.model = "Tarnwick", .dateTime = date});
    auto path = dir.Write(name, jpeg);
    platform::SetModificationTime(path, kFileTime * 1'000'000'000);
    return path;
  }
  IptcBatchReport Merge(IptcBatch batch) { return ApplyIptcToMany(batch, Host(), progress, stop.get_token()); }
  IptcApplyHost Host() const { return {options, locale, writer}; }

  test::TempDir dir;
  const ExifOptions options;
  const platform::LocaleText locale;
  IptcWriter writer;
  platform::NoProgress progress;
  std::stop_source stop;
  std::string refused, broken;
  bool stopAfterFirst = false;
  std::vector<std::pair<std::string, Items>> written;
};

TEST_F(Apply, FillsInTokensAndKeepsWhatNobodyEdits) {
  const auto path = Photo("a.jpg", {{90, "G", 1}, {5, "old"}, {200, "u"}}, "2003:05:17 10:11:12");
  const IptcSheetValues values = {{5, {"@file@ by @model@"}}, {80, {"me@example.org"}}, {105, {"@iso@"}}};
  EXPECT_EQ(ApplyIptc(path, values, Host()), IptcApplied::Written);
  ASSERT_EQ(written.size(), 1U);
  const Items expected = {{2, 200, "u"}, {2, 5, "a.jpg by Tarnwick"}, {2, 80, "me@example.org"}};
  auto items = written[0].second;
  std::erase_if(items, [](const auto& item) { return item.record == 1; });
  EXPECT_EQ(items, expected) << "a token without a value leaves nothing";
}

TEST_F(Apply, DoesNotWriteWhatIsThere) {
  const auto path = Photo("a.jpg", {{90, "G", 1}, {25, "a"}, {5, "a.jpg"}, {25, "b"}}, "");
  EXPECT_EQ(ApplyIptc(path, {{5, {"@file@"}}, {25, {"a", "b"}}}, Host()), IptcApplied::Unchanged);
  EXPECT_EQ(Merge({.paths = {path}, .values = {{25, {"b"}}}}).unchanged, 1);
  EXPECT_TRUE(written.empty());
  EXPECT_EQ(ApplyIptc(path, {{5, {"a.jpg"}}, {25, {"b", "a"}}}, Host()), IptcApplied::Written);
}

TEST_F(Apply, MergesIntoOneImageAfterTheOther) {
  const IptcBatch batch{
      .paths = {Photo("a.jpg", {{5, "old"}, {25, "x"}}, "2003:05:17 10:11:12"), Photo("b.jpg", {}, "")},
      .values = {{5, {"@file@"}}, {25, {"y"}}}};
  const auto report = Merge(batch);
  EXPECT_EQ(report.written, 2);
  ASSERT_EQ(written.size(), 2U);
  const Items first = {{2, 55, "20030517"}, {2, 60, "101112+0200"}, {2, 25, "x"}, {2, 25, "y"}, {2, 5, "old"}};
  const Items second = {{2, 25, "y"}, {2, 5, "b.jpg"}};
  EXPECT_EQ(written[0].second, first);
  EXPECT_EQ(written[1].second, second) << "the time of a file is not that of a shot";
  written.clear();
  auto other = batch;
  other.exifTimestamp = false;
  other.rules = {.mergeKeywords = false, .onlyReplaceEmpty = false, .leaveExistingIfNewEmpty = false};
  Merge(other);
  EXPECT_EQ(written[0].second, (Items{{2, 25, "y"}, {2, 5, "a.jpg"}}));
}

TEST_F(Apply, EndsAtTheFirstFailureAndNamesTheFile) {
  const IptcBatch batch{.paths = {Photo("a.jpg", {}, ""), Photo("b.jpg", {}, ""), Photo("c.jpg", {}, "")},
                        .values = {{5, {"n"}}}};
  const auto failure = [&]() -> std::string {
    try {
      Merge(batch);
    } catch (const platform::UserError& error) {
      return error.what();
    }
    return {};
  };
  refused = batch.paths[1];
  EXPECT_EQ(failure(), "Refused: " + batch.paths[1]);
  EXPECT_EQ(written.size(), 1U);
  refused.clear();
  broken = batch.paths[2];
  EXPECT_EQ(failure(), "The disk is full\n" + batch.paths[2]);
  EXPECT_THROW(ApplyIptc(broken, batch.values, Host()), platform::UserError);
  broken.clear();
  written.clear();
  stopAfterFirst = true;
  EXPECT_THROW(Merge(batch), platform::Cancelled);
  EXPECT_EQ(written.size(), 1U);
}

TEST_F(Apply, KnowsTheTimeOfTheShotFromThatOfTheFile) {
  const auto shot = [&](const std::string& date) { return ShotTimeOf(ExifData(Photo("a.jpg", {}, date))); };
  EXPECT_EQ(IptcDate(shot("2003:05:17 10:11:12")), "20030517");
  EXPECT_EQ(shot(""), 0);
  EXPECT_EQ(shot("0000:00:00 00:00:00"), 0);
  EXPECT_EQ(FileTimeOf(ExifData(Photo("a.jpg", {}, ""))), kFileTime);
  EXPECT_EQ(FileTimeOf(ExifData(dir / "gone.jpg")), 0);
}

TEST_F(Apply, DaysKeepTheTimeOfDay) {
  constexpr std::time_t kBeforeSummerTime = 1'048'928'400;  // 2003-03-29 10:00:00 in Berlin
  EXPECT_EQ(IptcTime(DaysFrom(kBeforeSummerTime, 1)), "100000+0200");
  EXPECT_EQ(IptcDate(DaysFrom(kBeforeSummerTime, 14)), "20030412");
  EXPECT_EQ(IptcDate(DaysFrom(kBeforeSummerTime, -2)), "20030327");
}

}  // namespace
}  // namespace ml::metadata
