#pragma once

#include <cstdint>
#include <string_view>

#include "metadata/edit/edited_file.h"

namespace ml::metadata {

/// Puts `text`, "YYYY:MM:DD HH:MM:SS", in the place of every date that the first and the EXIF directory hold in a field
/// of exactly that size with its zero. The TIFF header stands at `tiffHeader`. Does nothing if `text` has another
/// length or if there is no header. Fields that hold anything but text are left alone. Throws ExifException where a
/// directory or a date ends outside the file.
void WriteExifDates(EditedFile& file, std::uint64_t tiffHeader, std::string_view text);
/// The same with nothing read or written outside `tiff`, as in a segment of a JPEG.
void WriteExifDates(EditedFile& file, FileRange tiff, std::string_view text);

/// The same for the first EXIF block of a JPEG.
void WriteJpegDates(EditedFile& jpeg, std::string_view text);

}  // namespace ml::metadata
