#pragma once

#include <cstddef>
#include <span>

#include "metadata/edit/edited_file.h"

namespace ml::metadata {

/// A segment holds so much of a profile behind its name, its number and the number of all.
inline constexpr std::size_t kIccSegmentData = 65'518;
inline constexpr std::size_t kMaxIccSegments = 255;

/// Makes `profile` the colour profile of a JPEG: behind the leading APP0 and APP1 segments, so that EXIF data stay
/// where readers expect them, in as many segments as it takes. Segments of another profile are taken out, all other
/// bytes stay. False, with nothing changed, if the file has no segment. Throws UserError if the profile is too long.
bool WriteIccProfile(EditedFile& jpeg, std::span<const std::byte> profile);

}  // namespace ml::metadata
