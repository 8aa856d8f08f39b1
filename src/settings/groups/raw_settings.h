#pragma once

#include <cstdint>
#include <string>

namespace ml::settings {

/// Raw conversion. -10 in the values of the development engine stands for "as shot".
struct RawSettings {
  int jpegQuality = 95;  ///< 0..100
  int convertFormat = 0;
  std::uint8_t convertToSubDir = 1;  ///< on: into "CONVERTED" beside the source; off: into convertDirectory
  std::string convertDirectory;      ///< absolute, or relative to the source; see MakeDefaultSettings
  int tiffOutputResolution = 180;    ///< dots per inch
  int falseColourFilter = 1;         ///< set by hand only
  int method = 0;                    ///< 0 normal, 1 linear, 2 combined
  int postProcess = 0;
  int adjustSaturation = 0;
  int saturation = 100;  ///< percent
  int adjustGamma = 0;
  double gamma = 1.0;
  int levelsStyle = 0;  ///< 0 none, 1 auto, 2 manual
  int blackPoint = 0;
  double midPoint = 1.0;  ///< 0.01..9.99
  int whitePoint = 255;
  double blackPointPercent = 0.0;  ///< of the pixels clipped by automatic levels
  double whitePointPercent = 0.0;
  int resize = 0;
  int resizeWidth = 0;   ///< pixels
  int resizeHeight = 0;  ///< pixels
  int resizeUnits = 0;   ///< 0 pixels, 1 inches, 2 cm
  int resizeDpi = 240;   ///< dots per inch
  int sharpen = 0;
  int sharpenMethod = 0;     ///< 0 unsharp mask, 1 HQ style
  int hqSharpenAmount = 75;  ///< percent
  double usmRadius = 0.5;
  double usmAmount = 0.7;
  double usmThreshold = 0.0;  ///< percent
  int sameWhiteBalance = 3;   ///< any value but 0 is on
  int sharpnessLevel = 3;
  int sharpnessObject = 3;
  int colourMatrix = 0;           ///< 0 as shot, 1..5
  int falseResolutionFilter = 0;  ///< set by hand only
  int autoPreview = 0;
  int expCompAutoPreview = 0;
  int developContrast = 0;
  int developSaturation = 0;
  int developSharpness = 0;
  int developTone = -10;
  int photoEffect = 0;           ///< -1 as shot, 0 off
  int colourSpace = 0;           ///< 0 as shot, 1 sRGB, 2 AdobeRGB
  int colourTemperature = 5800;  ///< kelvin
  int enableLinearProfile = 0;
  int enableNormalProfile = 0;
  std::string normalProfile;
  std::string linearProfile;
  int filenameAppend = 1;
  int noiseBlending = 0;              ///< 0 off, 50 low, 75 normal, 95 high
  int threadPriority = 0;             ///< of long commands: 0, 1 or 2
  int convertEos1DRawInMainView = 0;  ///< develop instead of showing the viewing JPEG
};

}  // namespace ml::settings
