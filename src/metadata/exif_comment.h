#pragma once

#include <string>

#include "metadata/exif_data.h"

namespace ml::metadata {

/// The EXIF comment; without one, and where there is no room for one but a description, the description. White space
/// at the end is left out.
std::string GetExifComment(const ExifData& data);
/// The same, unless an IPTC caption takes its place: where the options say so, and in the formats that keep their
/// comment there.
std::string GetComment(const ExifData& data, const ExifOptions& options);

}  // namespace ml::metadata
