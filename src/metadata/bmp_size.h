#pragma once

#include <optional>

#include "metadata/byte_source.h"

namespace ml::metadata {

struct BmpSize {
  int width = 0;
  int height = 0;
  int bitsPerPixel = 0;
  bool topDown = false;  ///< the first row stored is the top one; the height is negative in the file
};

/// From the file header and an information header of any length, the oldest, of 12 bytes, included. Nothing if
/// the file does not begin so or a side is 0 or out of range. Throws UserError if it cannot be read.
std::optional<BmpSize> ReadBmpSize(const ByteSource& source);

/// The same for an information header alone, which begins the view, as AVI files have it.
std::optional<BmpSize> ReadDibSize(ByteView header);

}  // namespace ml::metadata
