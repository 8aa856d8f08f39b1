#pragma once

#include <cstdint>
#include <optional>

#include "metadata/edit/exif_entry_places.h"

/// The orientation of a JPEG, tag 274 in the chains of directories of its EXIF blocks.
namespace ml::metadata {

/// The first one; nothing if the file has none that is a number.
std::optional<ExifEntryPlace> FindExifOrientation(const ByteSource& jpeg);
/// The one that the picture is shown by: the first whose value is a turn that readers know, else the first one.
std::optional<ExifEntryPlace> FindShownOrientation(const ByteSource& jpeg);

/// The value that says that the picture is to be turned clockwise by so many degrees; 1, upright, for all but 90, 180
/// and 270.
std::uint32_t OrientationOfDegrees(int degrees);
/// Overwrites the first orientation of a JPEG. False, with nothing changed, if it has none.
bool WriteOrientationToExif(EditedFile& jpeg, int degrees);
/// Makes every orientation of a JPEG say that the picture lies as it is to be seen.
void MakeUpright(EditedFile& jpeg);

}  // namespace ml::metadata
