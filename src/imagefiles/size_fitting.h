#pragma once

#include "imaging/decoded_picture.h"

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

}  // namespace ml::imagefiles
