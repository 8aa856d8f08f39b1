#pragma once

#include <string>

#include "support/sample_photo.h"

namespace ml::test {

/// A picture in 252 colours, one byte a pixel.
struct IndexedPicture {
  int width = 0, height = 0;
  std::string palette;  ///< 256 times red, green, blue
  std::string pixels;

  /// Red, green and blue of each pixel.
  std::string Rgb() const;
};

/// Dithered in a fixed pattern.
IndexedPicture ToIndexed(const Picture& picture);

}  // namespace ml::test
