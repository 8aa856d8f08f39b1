#pragma once

#include <string_view>

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// How the shooting data of one format are read.
struct ExifFormat {
  std::string_view extension;  ///< lower case, with the dot
  /// Fills the record, whose `path` and `fileSize` are set, from the open file. What it throws (ExifException,
  /// UserError) says that the file is broken; the record keeps what was read until then.
  void (*read)(ExifData& data, const ByteSource& file) = nullptr;
  bool isJpeg = false;
  bool mayBeCanon = false;  ///< of those cameras more is known than the standard's tags tell
};

/// By the extension of `path` in any case; null if nothing is read from such files.
const ExifFormat* FindExifFormat(std::string_view path);

}  // namespace ml::metadata
