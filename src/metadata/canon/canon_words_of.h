#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "metadata/exif_data.h"

/// The arrays of a Canon note that give the record's fields when they are read: the reverse of ApplyCanonArray. A field
/// that is not known becomes a word without a meaning where there is one. Empty if nothing is known of the array.
namespace ml::metadata {

using CanonArray = std::vector<std::uint16_t>;

/// Tag 1.
CanonArray CameraSettingsOf(const ExifData& data);
/// Tag 2; only whole millimetres can be told.
CanonArray FocalLengthOf(const ExifData& data);
/// Tag 4.
CanonArray ShotInformationOf(const ExifData& data);
/// Tag 15, and tag 144 for the EOS-1D family.
CanonArray CustomFunctionsOf(const ExifData& data);

}  // namespace ml::metadata
