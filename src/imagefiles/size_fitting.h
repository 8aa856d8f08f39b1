#pragma once

#include "imaging/decoded_picture.h"

/// Every way to fit a picture into a box; all in whole divisions.
namespace ml::imagefiles {

/// The box that a picture is fitted into. The alternative pair lets a portrait image use a wider limit; 0 x 0
/// offers none.
struct DisplayLimits {
  int maxWidth = 0, maxHeight = 0, altWidth = 0, altHeight = 0;
  bool operator==(const DisplayLimits&) const = default;
};

/// The size at which a `sourceWidth` x `sourceHeight` picture shows within `limits`: aspect ratio kept in
/// integer divisions, never enlarged, never under one pixel.
imaging::PictureSize FitToLimits(int sourceWidth, int sourceHeight, const DisplayLimits& limits);

/// The same for a square box.
inline imaging::PictureSize FitToSquare(int sourceWidth, int sourceHeight, int side) {
  return FitToLimits(sourceWidth, sourceHeight, {.maxWidth = side, .maxHeight = side});
}

/// The largest size of that aspect ratio in a box, larger than the picture too: the width of the box with the height
/// that belongs to it, or else the height of the box. A side may become 0.
imaging::PictureSize FillBox(imaging::PictureSize picture, imaging::PictureSize box);

}  // namespace ml::imagefiles
