#pragma once

#include <string>

namespace ml::imagefiles {

/// What colour management of pictures on the screen needs to know of the settings. An empty path is no profile.
struct ColourOptions {
  std::string monitorProfile;        ///< "MonitorProfile"; empty also where "EnableMonitorProfile" is off
  std::string defaultProfile;        ///< "DefaultProfile"; empty also where "EnableDefaultProfile" is off
  bool readProfileFromExif = false;  ///< "ReadProfileFromExif"
  bool suppressThumbnails = false;   ///< "SuppressThumbnailCMS"
  bool operator==(const ColourOptions&) const = default;
};

}  // namespace ml::imagefiles
