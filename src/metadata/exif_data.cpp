#include "metadata/exif_data.h"

#include <sys/stat.h>

#include "metadata/exif_finish.h"
#include "metadata/exif_formats.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::metadata {
namespace {

/// One step over the contents of a file; a broken structure costs what stands behind it and marks the record.
template <class Step>
void Attempt(ExifData& data, Step&& step) {
  try {
    step();
  } catch (ExifException) {
    data.exifInvalid = true;
  } catch (const platform::UserError&) {
    data.exifInvalid = true;
  }
}

void ReadContents(ExifData& data, const ExifOptions& options) {
  const auto* format = FindExifFormat(data.path);
  const auto opened = format == nullptr ? std::nullopt : platform::OpenIfReadable(data.path);
  if (!opened) return;
  const FileSource file(*opened);
  Attempt(data, [&] { format->read(data, file); });
  if (format->mayBeCanon) Attempt(data, [&] { CompleteCanon(data, file); });
  if (format->isJpeg) Attempt(data, [&] { CompleteJpegSize(data, file, options); });
}

}  // namespace

ExifData::ExifData(const std::string& file, const ExifOptions& options) : path(file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) == 0) {
    displayPath = file;
    fileSize = static_cast<std::uint64_t>(status.st_size);
    shootingTime = status.st_mtim.tv_sec;
    ReadContents(*this, options);
    ClearFieldsOfOtherModels(*this);
    CompleteImageNumber(*this);
    CompleteDate(*this);
  }
  CompleteSize(*this);
}

}  // namespace ml::metadata
