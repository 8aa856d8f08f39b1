#include "metadata/companion_exif.h"

#include <array>
#include <ctime>
#include <string>

#include "metadata/canon/crw_properties.h"
#include "metadata/crw_file.h"
#include "metadata/exif_reader.h"
#include "metadata/iptc/iptc_readers.h"
#include "metadata/maker_note.h"
#include "platform/companion_set.h"
#include "platform/dates.h"
#include "platform/readable_file.h"

namespace ml::metadata {
namespace {

/// A companion's size is not that of the picture it stands for, also where reading it failed.
struct SizeEraser {
  ExifData& data;
  ~SizeEraser() { data.imageWidth = data.imageHeight = 0; }
};

/// False if there is no companion that can be read.
bool ReadCompanion(ExifData& data) {
  const auto path = platform::FindCompanion(data.path, ".thm");
  const auto file = path.empty() ? std::nullopt : platform::OpenIfReadable(path);
  if (!file) return false;
  const SizeEraser eraser{data};
  ReadJpegWithIptc(data, FileSource(*file));
  return true;
}

/// The camera keeps its local time as if it were universal time.
std::string CameraDate(std::uint32_t seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  std::tm fields{};
  ::gmtime_r(&time, &fields);
  std::array<char, 32> text{};
  const auto length = std::strftime(text.data(), text.size(), "%Y:%m:%d %H:%M:%S", &fields);
  return {text.data(), length};
}

void ReadHeaps(ExifData& data, const ByteSource& file) {
  const auto basics = ReadCrwBasics(file);
  data.userRotation = basics.rotation.value_or(0);
  data.imageNumber = static_cast<std::int32_t>(basics.fileNumber.value_or(0));
  if (data.dateTime.empty() && basics.time) data.dateTime = CameraDate(basics.time->seconds);
}

}  // namespace

void ReadJpegWithIptc(ExifData& data, const ByteSource& file) {
  ReadJpegSegments(data, file);
  ReadJpegIptc(data, file);
}

void ReadCrwWithCompanion(ExifData& data, const ByteSource& file) {
  const bool hasCompanion = ReadCompanion(data);
  if (!hasCompanion || data.imageNumber == 0) ReadHeaps(data, file);
  ReadCrwProperties(data, file);
}

void ReadAviCompanion(ExifData& data, const ByteSource&) { ReadCompanion(data); }

}  // namespace ml::metadata
