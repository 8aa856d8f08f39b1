#include "catalogue/shooting_timestamps.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/dates.h"
#include "platform/edit_batch.h"
#include "platform/edit_journal.h"
#include "platform/file_status.h"
#include "support/fake_trash.h"
#include "support/fakes.h"
#include "support/faulty_file_system.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::catalogue {
namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

class TimestampTest : public testing::Test {
 protected:
  /// A file last changed in 2001.
  std::string Add(const std::string& name, const std::string& content) const {
    auto path = dir_.Write(name, content);
    platform::SetModificationTime(path, 1'000'000'000 * kSecond);
    return path;
  }
  std::string AddPhoto(const std::string& name, const std::string& date) const {
    const auto jpeg = test::EncodeJpeg(test::PaintPlain(8, 8, 0x808080));
    return Add(name, test::WithExif(jpeg, {.make = "M", .model = "M", .dateTime = date}));
  }
  static std::int64_t TimeOf(const std::string& path) { return platform::ReadFileStatus(path)->modified / kSecond; }
  static std::int64_t Local(int year, int month, int day) {
    std::tm date{};
    date.tm_year = year - 1900;
    date.tm_mon = month - 1;
    date.tm_mday = day;
    date.tm_hour = 10;
    return *platform::ToTime(date);
  }

  const test::TempDir dir_;
  const imagefiles::ImageFileOptions options_;
  imagefiles::CompanionFinder companions_{options_};
  test::FakeTrash trash_{dir_ / "trash"};
  test::FakeClock clock_;
  platform::EditJournal journal_{{.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state"}};
};

TEST_F(TimestampTest, TakesTheSixNumbersAsTheyStand) {
  struct Case {
    const char* date;
    std::int64_t expected;
  };
  const Case cases[] = {
      {"2003:10:04 10:00:00", Local(2003, 10, 4)}, {"2003.10.04 10.00.00", Local(2003, 10, 4)},
      {"2003:13:40 10:00:00", Local(2004, 2, 9)},  {"1969:05:01 10:00:00", Local(1969, 5, 1)},
      {"2003:10:04 10:00", 1'000'000'000},
  };
  int number = 0;
  for (const auto& c : cases) {
    const auto path = AddPhoto(std::to_string(++number) + ".jpg", c.date);
    EXPECT_EQ(SetTimestamps({path}, false, {.options = options_, .companions = companions_}),
              std::vector<std::string>{});
    EXPECT_EQ(TimeOf(path), c.expected) << c.date;
  }
}

TEST_F(TimestampTest, AFileWithoutADateKeepsItsTimeToTheNanosecond) {
  const auto path = Add("a.gif", "no picture");
  platform::SetModificationTime(path, 1'000'000'000 * kSecond + 123'456'789);
  const auto before = platform::ReadFileStatus(path);
  EXPECT_EQ(SetTimestamps({path}, true, {.options = options_, .companions = companions_}), std::vector<std::string>{});
  EXPECT_EQ(platform::ReadFileStatus(path)->modified, before->modified);
  EXPECT_EQ(platform::ReadFileStatus(path)->mode & 0222, 0U) << "the rest is done";
}

TEST_F(TimestampTest, CompanionsShareItAndUndoBringsTheOldStateBack) {
  const auto photo = test::ReadAll(AddPhoto("source.jpg", "2003:10:04 10:00:00"));
  const auto crw = Add("a.crw", "no picture"), thm = Add("a.THM", *photo), txt = Add("a.txt", "note");
  const auto avi = Add("b.avi", "no film"), aviThm = Add("b.thm", *photo);
  const auto gone = dir_ / "gone.jpg";
  {
    platform::EditBatch batch(journal_, "Timestamp");
    const auto failed =
        SetTimestamps({crw, gone, avi}, true, {.options = options_, .companions = companions_, .batch = &batch});
    EXPECT_EQ(failed, std::vector<std::string>{}) << "what does not exist is no failure";
    EXPECT_EQ(batch.Failure(), std::nullopt);
  }
  for (const auto& path : {crw, thm}) {
    EXPECT_EQ(TimeOf(path), Local(2003, 10, 4)) << path;
    EXPECT_EQ(platform::ReadFileStatus(path)->mode & 0222, 0U);
  }
  EXPECT_EQ(TimeOf(txt), 1'000'000'000);
  EXPECT_EQ(TimeOf(aviThm), 1'000'000'000) << "only that of a CRW file";
  journal_.Undo();
  for (const auto& path : {crw, thm, avi}) {
    EXPECT_EQ(TimeOf(path), 1'000'000'000) << path;
    EXPECT_NE(platform::ReadFileStatus(path)->mode & 0200, 0U);
  }
}

TEST_F(TimestampTest, TellsWhatFailedAndGoesOn) {
  class NoTimes final : public test::FaultyFileSystem {
   public:
    NoTimes() : FaultyFileSystem(test::Fault::Eio, -1) {}
    int SetModificationTime(const std::string& path, std::int64_t nanoseconds) override {
      if (path.ends_with("1.jpg")) return errno = EPERM, -1;
      return FaultyFileSystem::SetModificationTime(path, nanoseconds);
    }
  } fileSystem;
  const auto first = AddPhoto("1.jpg", "2003:10:04 10:00:00"), second = AddPhoto("2.jpg", "2003:10:04 10:00:00");
  const auto far = AddPhoto("3.jpg", "9999:10:04 10:00:00");
  EXPECT_EQ(SetTimestamps({first, far, second}, false,
                          {.options = options_, .companions = companions_, .fileSystem = fileSystem}),
            (std::vector<std::string>{first, far}));
  EXPECT_EQ(TimeOf(first), 1'000'000'000);
  EXPECT_EQ(TimeOf(second), Local(2003, 10, 4));
}

}  // namespace
}  // namespace ml::catalogue
