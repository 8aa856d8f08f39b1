#pragma once

#include <map>
#include <string>

namespace ml::settings {

/// Which profile goes into converted images, by the name of the camera model.
struct ProfileTable {
  std::map<std::string, std::string> linear;  ///< path of the profile for linear conversion
  std::map<std::string, std::string> normal;  ///< and for normal conversion
  /// Bit 0 embed for normal conversion, 1 for linear conversion, 2 automatic sRGB, 3 automatic AdobeRGB.
  std::map<std::string, int> flags;
  int selectedModel = 0;  ///< index in the preferences' list of models
};

}  // namespace ml::settings
