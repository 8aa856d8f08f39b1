#pragma once

#include <map>
#include <string>

#include "imagefiles/profile_finder.h"
#include "metadata/exif_data.h"
#include "platform/interaction.h"

namespace ml::rawconvert {

/// Which colour profile goes into converted images, by the model text of the camera.
struct RawProfileTable {
  std::map<std::string, std::string> linear;  ///< path of the profile for linear conversion
  std::map<std::string, std::string> normal;  ///< and for normal conversion
  std::map<std::string, int> flags;           ///< see profile_flag
};

namespace profile_flag {
inline constexpr int kEmbedNormal = 1;
inline constexpr int kEmbedLinear = 2;
inline constexpr int kAutoSrgb = 4;
inline constexpr int kAutoAdobeRgb = 8;
}  // namespace profile_flag

/// `path` of a chosen profile, empty for none; empty, and told, if the file does not exist.
std::string ExistingProfile(const std::string& path, platform::Interaction& ask);

/// Path of the profile for a conversion of this shot; empty for none. A chosen file that does not exist is told.
std::string GetConversionProfile(const metadata::ExifData& shootingData, bool linear, const RawProfileTable& table,
                                 platform::Interaction& ask,
                                 const imagefiles::ProfileFinder& finder = imagefiles::ProfileFinder::OfSystem());

}  // namespace ml::rawconvert
