#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "metadata/byte_source.h"

/// Colour profiles inside of image files. Nothing is checked of a profile's content.
namespace ml::metadata {

using IccProfile = std::vector<std::byte>;

/// The profile in the file's metadata, by its name: JPEG, TIFF, PSD or PNG, the name at least five bytes long.
/// Nothing if there is none, or it cannot be read.
std::optional<IccProfile> GetIccProfileData(const std::string& path);

/// The APP2 segments called ICC_PROFILE, joined. They must stand in the order of their numbers from 1 on and agree
/// in the total; the profile has at most 1,048,576 bytes.
std::optional<IccProfile> ReadJpegIccProfile(const ByteSource& source);
/// Resource 1039, at most 8 MiB.
std::optional<IccProfile> ReadPsdIccProfile(const ByteSource& source);
/// That of the colour box, at most 8 MiB.
std::optional<IccProfile> ReadJp2IccProfile(const ByteSource& source);

}  // namespace ml::metadata
