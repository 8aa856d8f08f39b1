#pragma once

#include <ctime>
#include <optional>

#include "metadata/byte_source.h"

/// The shooting time alone, for sorting whole directories: reads two directories of tags and one text.
namespace ml::metadata {

/// Of the first EXIF block: the original date, else the digitised one, else that of the file's last change, as local
/// time. Nothing if the first of them that is there is no date. Throws UserError if the file cannot be read.
std::optional<std::time_t> ReadJpegDate(const ByteSource& file);
/// The same of a TIFF or NEF file. Nothing as well if a directory is broken.
std::optional<std::time_t> ReadTiffDate(const ByteSource& file);

}  // namespace ml::metadata
