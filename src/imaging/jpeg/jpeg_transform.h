#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// What can be done to a JPEG picture without decoding it. The turns are clockwise and have the numbers of Turn.
enum class JpegTransform {
  None = 0,
  FlipHorizontal = 1,  ///< left and right change places
  FlipVertical = 2,
  Transpose = 3,   ///< over the diagonal from the upper left
  Transverse = 4,  ///< over the other diagonal
  cw90 = 5,
  half = 6,
  cw270 = 7
};

constexpr JpegTransform TransformOf(Turn turn) { return static_cast<JpegTransform>(turn); }
/// Whether width and height change places.
constexpr bool SwapsSides(JpegTransform transform) {
  return transform == JpegTransform::Transpose || transform == JpegTransform::Transverse ||
         transform == JpegTransform::cw90 || transform == JpegTransform::cw270;
}

/// A JPEG stream with the picture of `jpeg` transformed: the coefficients are moved, none is lost. Blocks that the
/// picture's edge cuts cannot leave that edge; they are kept, so that the size is that of the original. A progressive
/// picture stays progressive. Segments of applications and comments are as the library writes them, and what stands
/// behind the end of image is left out. Throws LibraryError if the picture is damaged, or over kMaxPixelsWhole.
std::vector<std::byte> TransformJpeg(std::span<const std::byte> jpeg, JpegTransform transform);

}  // namespace ml::imaging
