#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace ml::imaging {

struct RleShape {
  std::size_t width = 0, height = 0;
  int bits = 8;              ///< 4 or 8
  std::size_t rowBytes = 0;  ///< of the rows to be given
};

/// Rows of palette indices as an uncompressed bitmap stores them, the lowest first, from the run lengths of a
/// compressed one. Pixels that are jumped over get the index 0. Throws LibraryError if the data end in the middle.
std::vector<std::byte> UnpackRle(std::span<const std::byte> packed, const RleShape& shape);

}  // namespace ml::imaging
