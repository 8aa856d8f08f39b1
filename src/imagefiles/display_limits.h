#pragma once

#include "imagefiles/size_fitting.h"

namespace ml::imagefiles {

/// The room for the picture in the window, in pixels of the screen.
struct PictureRoom {
  int width = 0, height = 0;
  int columnWidth = 0;  ///< of the controls beside it, which a portrait picture may use too
};

/// "OptimiseSize": whose embedded previews are shown unscaled where there is room for them.
enum class OptimiseSize { LargestImage = 0, D30Raw = 1, G1Raw = 2 };

/// The limits of a display with this room. They are at least 1.
DisplayLimits ApplyDisplayLimits(const PictureRoom& room, OptimiseSize optimiseSize);

}  // namespace ml::imagefiles
