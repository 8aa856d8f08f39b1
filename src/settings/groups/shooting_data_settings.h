#pragma once

#include <cstdint>
#include <string>

namespace ml::settings {

/// Shooting data, its export, and the tools that copy metadata or take JPEGs out of raw files.
struct ShootingDataSettings {
  std::uint8_t exportOnePerImage = 1;
  std::uint8_t exportDelimiter = 124;  ///< a character, "|"
  int exportHeadings = 0;
  int exportCustomFormat = 0;
  std::string exportFormatString;
  int extractJpegExif = 1;
  int extractJpegRotate = 1;
  int extractJpegTimestamp = 1;
  int extractJpegCopyViewingJpegs = 0;
  int copyExifDataToTiffs = 0;
  std::string exifFormatString =
      "@year@/@month@/@day@ @time@, @lens@mm @ @focalLength@mm, @shutter@sec f/@aperture@, Exp:@exposureMode@, ISO "
      "@iso@, AF:@focusMode@, WB:@whiteBalance@, Flash:@flash@";
  std::string filmStripExifFormatString = "@exif@";
  std::string mainExifFormatString = "@exifSummary@";
  int tiffRotateWarning = 1;
  int adjustTimeTimestamp = 0;
  int regenEmbeddedJpegWidth = 1200;
  int regenEmbeddedJpegQuality = 85;
  int shootingDataX = -1;  ///< -1: never placed
  int shootingDataY = -1;
  int shootingDataWidth = 100;
  int shootingDataHeight = 100;
};

}  // namespace ml::settings
