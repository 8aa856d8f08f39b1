#pragma once

#include <optional>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// What the frame header of a JPEG tells.
struct JpegSize {
  int width = 0;
  int height = 0;
  int components = 0;
  bool progressive = false;
};

/// From the segments alone; nothing if there is no whole frame header among them. Throws UserError if the
/// file cannot be read.
std::optional<JpegSize> ReadJpegSize(const ByteSource& source);

}  // namespace ml::metadata
