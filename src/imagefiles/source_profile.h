#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "imagefiles/profile_finder.h"
#include "metadata/exif_data.h"

namespace ml::imagefiles {

enum class ColourSpace { Srgb, AdobeRgb };

/// What tells of a picture's colours, as a file or a conversion has it; 0 and the empty text tell nothing.
struct ColourMarks {
  int matrix = 0;           ///< 1 to 5
  int space = 0;            ///< 1 sRGB, 2 AdobeRGB
  std::string_view text{};  ///< "sRGB" or "AdobeRGB"
};

/// The space of a picture by the camera `model`; nothing for a model that records none. Kept: whatever is not clearly
/// sRGB is AdobeRGB, also where nothing is told.
std::optional<ColourSpace> RecordedColourSpace(std::string_view model, const ColourMarks& marks);

/// The same from its shooting data.
std::optional<ColourSpace> RecordedColourSpaceOf(const metadata::ExifData& shootingData);

/// Path of the profile that stands for the colour space in the shooting data; empty if the camera records none, or no
/// such profile is found.
std::string GetSourceProfile(const metadata::ExifData& shootingData,
                             const ProfileFinder& finder = ProfileFinder::OfSystem());

}  // namespace ml::imagefiles
