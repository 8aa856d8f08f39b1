#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "metadata/edit/exif_segment.h"

namespace ml::metadata {

/// Puts `text` into the user comment, cut to its field, else into the description, where it must fit with its zero. The
/// fields keep the size that the camera gave them. Gives the sentence that tells why nothing was changed, if there is
/// no field or the description is too small.
[[nodiscard]] std::optional<std::string> WriteExifComment(ExifSegment& segment, std::string_view text);

}  // namespace ml::metadata
