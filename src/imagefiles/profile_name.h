#pragma once

#include "metadata/exif_data.h"

namespace ml::imagefiles {

/// Fills `iccProfileName` for a text: the name of the profile in the file, where it has one and the name is not known
/// yet. To be called before a text is made; nothing is opened for a file without a profile.
void FillProfileName(metadata::ExifData& data);

}  // namespace ml::imagefiles
