#pragma once

#include <optional>
#include <string>

#include "metadata/icc_carriers.h"

namespace ml::imagefiles {

/// The colour profile in an image file of any format that may carry one: those of GetIccProfileData, and JPEG 2000.
/// Nothing if there is none, or the file cannot be read.
std::optional<metadata::IccProfile> ReadEmbeddedProfile(const std::string& path);

}  // namespace ml::imagefiles
