#include "imagefiles/edits/turned_orientation.h"

#include "metadata/edit/orientation_writer.h"
#include "metadata/exif_block.h"

namespace ml::imagefiles {

int DegreesOf(imaging::Turn turn) {
  switch (turn) {
    case imaging::Turn::cw90:
      return 90;
    case imaging::Turn::half:
      return 180;
    case imaging::Turn::cw270:
      return 270;
    default:
      return 0;
  }
}

std::uint32_t TurnedOrientation(std::uint32_t present, imaging::Turn turn) {
  const int degrees = metadata::DegreesOfOrientation(present).value_or(0);
  return metadata::OrientationOfDegrees((degrees + DegreesOf(turn)) % 360);
}

}  // namespace ml::imagefiles
