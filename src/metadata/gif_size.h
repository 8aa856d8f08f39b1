#pragma once

#include <optional>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// The screen of a GIF file, on which its frames are drawn.
struct GifSize {
  int width = 0;
  int height = 0;
};

/// Nothing if the file does not begin as a GIF or a side is 0. Throws UserError if it cannot be read.
std::optional<GifSize> ReadGifSize(const ByteSource& source);

}  // namespace ml::metadata
