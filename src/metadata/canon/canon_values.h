#pragma once

#include <cstdint>
#include <string_view>

#include "metadata/canon/canon_words.h"
#include "metadata/exif_data.h"

/// What the entries of a Canon note, and the records of a CRW file with the same contents, mean for the record of
/// shooting data. A tag without a meaning changes nothing.
namespace ml::metadata {

namespace canon_tag {
inline constexpr std::uint16_t kCameraSettings = 1, kFocalLength = 2, kShotInformation = 4, kFirmware = 7,
                               kImageNumber = 8, kOwner = 9, kBodyNumber = 12, kCustomFunctions = 15,
                               kAfInformation = 18, kEos1DCustomFunctions = 144, kColorTemperature = 174,
                               kColorSpace = 180;
}

void ApplyCanonString(ExifData& data, std::uint16_t tag, std::string_view text);
void ApplyCanonLong(ExifData& data, std::uint16_t tag, std::uint32_t value);
void ApplyCanonArray(ExifData& data, std::uint16_t tag, CanonWords words);

}  // namespace ml::metadata
