#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "metadata/file_range.h"

namespace ml::metadata {

/// A JPEG stream seen from its picture: what belongs to it, and what was only put beside it.
struct JpegLayout {
  /// Segments of applications and comments, from their markers on, wherever they stand in front of `end`.
  std::vector<FileRange> applications;
  std::uint64_t end = 0;  ///< behind the end of image; the size of the data if that is missing
};

/// Goes through all of `jpeg`, compressed data included. A segment that the data cut off ends the search.
JpegLayout ReadJpegLayout(std::span<const std::byte> jpeg);

}  // namespace ml::metadata
