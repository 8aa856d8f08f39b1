#pragma once

#include <string>

#include "metadata/exif_data.h"

/// The first entry of each list of a dialog: as shot, with what the file says.
namespace ml::rawconvert {

/// "As shot (text)", or "As shot" if `text` is empty.
std::string AsShotLabel(const std::string& text);
std::string AsShotContrast(const metadata::ExifData& exif);
std::string AsShotSaturation(const metadata::ExifData& exif);
std::string AsShotSharpness(const metadata::ExifData& exif);
std::string AsShotTone(const metadata::ExifData& exif);
std::string AsShotPhotoEffect(const metadata::ExifData& exif);
std::string AsShotWhiteBalance(const metadata::ExifData& exif);
/// The EOS-1D dialogs.
std::string AsShotColourMatrix(const metadata::ExifData& exif);
std::string AsShotSharpening(const metadata::ExifData& exif);
/// The 10D dialog.
std::string AsShotColourSpace(const metadata::ExifData& exif);

}  // namespace ml::rawconvert
