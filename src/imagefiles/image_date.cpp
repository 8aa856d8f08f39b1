#include "imagefiles/image_date.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "imagefiles/format_table.h"
#include "imagefiles/thm_file.h"
#include "metadata/exif_data.h"
#include "metadata/exif_dates.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using DateReader = std::optional<std::time_t> (*)(const metadata::ByteSource& file);

struct DateRow {
  std::string_view extension;
  DateReader read;
};
/// Files of all other formats sort by the time of their last change.
constexpr DateRow kDateRows[] = {{".jpg", metadata::ReadJpegDate},  {".jpe", metadata::ReadJpegDate},
                                 {".jpeg", metadata::ReadJpegDate}, {".thm", metadata::ReadJpegDate},
                                 {".tif", metadata::ReadTiffDate},  {".tiff", metadata::ReadTiffDate},
                                 {".nef", metadata::ReadTiffDate}};

std::int64_t FileTime(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? static_cast<std::int64_t>(status.st_mtim.tv_sec) : -1;
}

std::optional<std::time_t> DateIn(const std::string& path, DateReader read) {
  const auto file = platform::OpenIfReadable(path);
  if (!file) return std::nullopt;
  try {
    return read(metadata::FileSource(*file));
  } catch (const platform::UserError&) {
    return std::nullopt;
  }
}

}  // namespace

std::int64_t GetImageDateTime(const std::string& path) {
  const auto* format = FindFormat(path);
  if (format != nullptr && format->hasThm) {
    if (const auto companion = FindThm(path); !companion.empty()) return GetImageDateTime(companion);
    const bool exists = FileTime(path) >= 0;
    if (exists && platform::EndsWithNoCase(path, ".crw")) return metadata::ExifData(path).shootingTime;
  }
  const auto extension = platform::AsciiLower(platform::SplitPath(path).extension);
  const auto* row = std::ranges::find(kDateRows, extension, &DateRow::extension);
  const auto date = row == std::end(kDateRows) ? std::nullopt : DateIn(path, row->read);
  return date ? static_cast<std::int64_t>(*date) : FileTime(path);
}

}  // namespace ml::imagefiles
