#pragma once

#include <cstdint>

namespace ml::settings {

/// The display of the current image.
struct DisplaySettings {
  int histogramRed = 1;
  int histogramGreen = 1;
  int histogramBlue = 1;
  int histogramIntensity = 1;
  std::uint8_t highQualityMode = 0;
  std::uint8_t showFocusPoints = 0;
  std::uint8_t highlightBlink = 0;
  int highlightBlinkMethod = 0;
  int highlightBlinkThreshold = 250;  ///< 0..255
  int histogramX = -1;                ///< -1: never placed
  int histogramY = -1;
  int optimiseSize = 0;  ///< fits the picture to the sizes of previews: 0 off, 1, 2; starts at 0 in every run
};

}  // namespace ml::settings
