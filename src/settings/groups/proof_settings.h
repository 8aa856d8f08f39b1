#pragma once

#include <string>

#include "platform/font_record.h"
#include "settings/groups/watermark_settings.h"

namespace ml::settings {

/// Proofs. -10 in the raw values stands for "as shot"; colours are 0x00BBGGRR.
struct ProofSettings {
  int format = 0;  ///< 0 JPEG .. 6 TIFF 16-bit
  int quality = 95;
  int maxWidth = 600;
  int maxHeight = 400;
  int resizeUnits = 0;  ///< 0 pixels, 1 inches, 2 cm
  int resizeDpi = 240;
  int resize = 0;
  int rotateToLandscape = 0;  ///< 0 none, 1 landscape, 2 portrait
  int saturation = 100;
  int noiseReduction = 0;
  int noiseFilterStrength = 1;  ///< 0 low, 1 normal, 2 high
  int sharpenMethod = 0;        ///< 0 unsharp mask, 1 HQ style
  int hqSharpenAmount = 75;
  int sharpen = 1;
  double usmRadius = 0.5;
  double usmSigma = 1.0;
  double usmThreshold = 0.0;
  double usmAmount = 1.0;
  double gamma = 1.0;
  int rawContrast = -10;
  int rawSaturation = -10;
  int rawSharpness = -10;
  int rawWhiteBalance = -10;
  int rawLinearConversion = 0;
  int cropImage = 0;
  int adjustSaturation = 0;
  int adjustGamma = 0;
  int autoLevels = 0;
  double cropWidthRatio = 5.0;
  double cropHeightRatio = 7.0;
  double blackPoint = 0.0;  ///< percent of the pixels, as whitePoint
  double whitePoint = 0.0;
  WatermarkSettings watermark1{
      .font = platform::FontRecord::FromPoints("Arial", 7), .horzOffset = 15, .vertOffset = 15};
  int addWatermark1 = 0;
  WatermarkSettings watermark2{
      .font = platform::FontRecord::FromPoints("Arial", 7), .horzOffset = 15, .vertOffset = 15};
  int addWatermark2 = 0;
  int convertColourspace = 0;
  std::string outputProfile;
  int renderingIntent = 0;
  int embedProfile = 1;
  int border = 0;
  int borderSize = 20;  ///< pixels
  int borderColour = 0xFFFFFF;
  int borderStyle = 0;  ///< 0 full, 1 top only, 2 bottom only
};

}  // namespace ml::settings
