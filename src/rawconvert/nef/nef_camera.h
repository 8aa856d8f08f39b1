#pragma once

#include <cstdint>
#include <string_view>

namespace ml::rawconvert {

/// A camera whose raw files are decoded here.
struct NefCamera {
  std::string_view model;           ///< as the files write it
  int index = 0;                    ///< `cameraIndex`
  int height = 0, width = 0;        ///< of the sensor, for files that do not state them
  std::uint32_t filterPattern = 0;  ///< see ColourAt
  double referenceRed = 0, referenceBlue = 0;
  int colours = 3;
};

inline constexpr int kNefD1X = 1;
inline constexpr int kNefD100 = 4;
inline constexpr int kNefE5700 = 5;

/// The camera of that model text, without regard to case and to spaces behind it; null if it is not known.
const NefCamera* FindNefCamera(std::string_view model);

/// The colour of a site: 0 red, 1 green, 2 blue; on a sensor with four colours 0 green, 1 magenta, 2 cyan, 3 yellow.
/// The pattern holds two bits a site, for the two columns of an even row and then those of an odd one.
constexpr int ColourAt(const NefCamera& camera, int row, int column) {
  return static_cast<int>(camera.filterPattern >> (((row & 1) * 2 + (column & 1)) * 2) & 3U);
}

}  // namespace ml::rawconvert
