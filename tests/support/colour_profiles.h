#pragma once

#include <string>

/// Colour profiles as a library writes them, for pictures whose colours shall change visibly.
namespace ml::test {

struct RgbProfile {
  bool swapped = false;     ///< red stands where blue is in sRGB, and blue where red is
  double mediaWhite = 1.0;  ///< brightness of the paper; below 1 it counts for the absolute intent alone
  std::string name = "Plain";
};
/// sRGB but for what is told.
std::string EncodeProfile(const RgbProfile& profile);
std::string GreyProfile();
/// Opens, and says that its colours are `space` ("CMYK"); there is nothing behind that.
std::string ProfileOfSpace(const std::string& space);

}  // namespace ml::test
