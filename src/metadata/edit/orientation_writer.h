#pragma once

#include <cstdint>
#include <optional>

#include "metadata/edit/edited_file.h"

namespace ml::metadata {

/// Where a file keeps its orientation, tag 274.
struct OrientationPlace {
  std::uint64_t position = 0;  ///< of the value
  std::uint32_t width = 2;     ///< bytes of the value, 2 or 4
  ByteOrder order = ByteOrder::Little;
  std::uint32_t value = 0;  ///< what stands there
};

/// The first in the chain of directories of the TIFF structure in `tiff`; nothing if there is none or what stands in
/// front of it is broken.
std::optional<OrientationPlace> FindTiffOrientation(const ByteSource& file, FileRange tiff);
/// The first in the EXIF blocks of a JPEG.
std::optional<OrientationPlace> FindExifOrientation(const ByteSource& jpeg);

/// Overwrites it. The place must have been found in the present content of `file`.
void WriteOrientation(EditedFile& file, const OrientationPlace& place, std::uint32_t value);

/// The value that says that the picture is to be turned clockwise by so many degrees; 1, upright, for all but 90, 180
/// and 270.
std::uint32_t OrientationOfDegrees(int degrees);
/// Overwrites the first orientation of a JPEG. False, with nothing changed, if it has none.
bool WriteOrientationToExif(EditedFile& jpeg, int degrees);

}  // namespace ml::metadata
