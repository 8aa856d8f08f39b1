#pragma once

#include <string>

namespace ml::settings {

/// Colour management. Profiles are paths of files, the empty path is none.
struct ColourSettings {
  int enableMonitorProfile = 0;
  std::string monitorProfile;
  std::string jpegProfile;  ///< embedded in batches of JPEGs
  int enableDefaultProfile = 0;
  std::string defaultProfile;  ///< of images that carry none
  int readProfileFromExif = 0;
  int enablePrinterProfile = 0;
  int suppressThumbnailColour = 0;
};

}  // namespace ml::settings
