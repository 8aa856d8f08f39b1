#pragma once

#include <string>

#include "metadata/exif_data.h"

/// What may be done with a file, by its name and, where that does not tell, by what it holds.
namespace ml::imagefiles {

/// Whether a name stands for a raw file: ".crw", ".thm" and ".nef", and a ".tif" that is an EOS-1D raw file. Kept:
/// never ".tiff", and never the raw formats that count as plain images.
bool IsRawFile(const std::string& path);

/// The same of the formats: also those that count as plain images, and no companions.
bool IsAnyRawFile(const std::string& path);

/// Whether there is a place for IPTC data; for ".crw" and ".avi" that is the companion, which must exist.
bool CanHoldIptc(const std::string& path);

/// Whether raw development knows the camera.
bool CanConvertRaw(const metadata::ExifData& exif);
bool CanConvertRaw(const std::string& path);

}  // namespace ml::imagefiles
