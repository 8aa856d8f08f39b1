#include "catalogue/shooting_timestamps.h"

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <limits>
#include <optional>

#include "metadata/exif_data.h"
#include "platform/dates.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/paths.h"

namespace ml::catalogue {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

/// An image with those of its companions that share its time.
std::vector<std::string> FilesOf(const std::string& path, const TimestampTools& tools) {
  std::vector<std::string> files{path};
  const auto companions = tools.companions.Find(path);
  // Kept: the ".thm" of an ".avi" keeps its time.
  const bool hasThm = platform::EndsWithNoCase(path, ".crw") && !companions.thm.empty();
  if (hasThm) files.push_back(companions.thm);
  if (!companions.jpg.empty()) files.push_back(companions.jpg);
  return files;
}

struct ShootingTime {
  std::string text;
  std::int64_t nanoseconds = 0;
};

/// The date of a file that records none is its own time: that must neither lose its fraction nor, in the hour that
/// comes twice when summer time ends, become the other hour's.
bool HasTime(const std::string& path, const ShootingTime& time, platform::FileSystem& fileSystem) {
  const auto status = platform::ReadFileStatus(path, fileSystem);
  return status && platform::ExifDateText(static_cast<std::time_t>(status->modified / kSecond)) == time.text;
}

void SetFile(const std::string& path, const ShootingTime& time, bool setReadOnly, const TimestampTools& tools) {
  const bool hasTime = HasTime(path, time, tools.fileSystem);
  if (hasTime && !setReadOnly) return;
  if (tools.insteadOfWriting) return tools.insteadOfWriting(path);
  if (tools.batch != nullptr) tools.batch->WillChangeStatus(path);
  // Read-only files keep that: their time can be set all the same.
  if (!hasTime) platform::SetModificationTime(path, time.nanoseconds, tools.fileSystem);
  if (setReadOnly) platform::SetReadOnly(path, tools.fileSystem);
}

/// Nothing for a date that file systems cannot hold.
std::optional<std::int64_t> Nanoseconds(const std::tm& date) {
  constexpr auto kLimit = std::numeric_limits<std::int64_t>::max() / kSecond;
  const auto time = platform::ToTime(date);
  if (!time || *time > kLimit || *time < -kLimit) return std::nullopt;
  return static_cast<std::int64_t>(*time) * kSecond;
}

bool SetTimestamp(const std::string& path, bool setReadOnly, const TimestampTools& tools) {
  if (!platform::ReadFileStatus(path, tools.fileSystem)) return errno == ENOENT || errno == ENOTDIR;
  const metadata::ExifData exif(path, tools.options.ForExif());
  // Kept: no test of the ranges, so that the 40th of a month is a day of the next one.
  const auto date = platform::ParseDateTime(exif.dateTime, platform::DateForm::DotsUnchecked);
  if (!date) return true;
  const auto nanoseconds = Nanoseconds(*date);
  if (!nanoseconds) return false;
  try {
    const ShootingTime time{exif.dateTime, *nanoseconds};
    for (const auto& file : FilesOf(path, tools)) SetFile(file, time, setReadOnly, tools);
  } catch (const platform::UserError&) {
    return false;  // the caller has the sentence for all of them
  }
  return true;
}

}  // namespace

std::vector<std::string> SetTimestamps(const std::vector<std::string>& paths, bool setReadOnly,
                                       const TimestampTools& tools) {
  std::vector<std::string> failed;
  for (const auto& path : paths) {
    if (!SetTimestamp(path, setReadOnly, tools)) failed.push_back(path);
  }
  return failed;
}

}  // namespace ml::catalogue
