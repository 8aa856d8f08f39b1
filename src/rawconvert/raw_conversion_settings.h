#pragma once

#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

enum class Method { Normal = 0, Linear = 1, Combined = 2 };
enum class LevelsStyle { None = 0, Auto = 1, Manual = 2 };
enum class SharpenMethod { UnsharpMask = 0, HqStyle = 1 };
enum class ResizeUnits { Pixels = 0, Inches = 1, Centimetres = 2 };

/// Everything that a raw conversion needs apart from where its result goes. Plain values; a run works on a copy, of
/// which only `develop` goes back. Integers that are flags count as on for any value but 0.
struct RawConversionSettings {
  Method method = Method::Normal;
  int falseColourFilter = 1;

  // The steps after the development, all of them only if postProcess is on
  int postProcess = 0;
  int adjustSaturation = 0;
  int saturation = 100;  ///< percent; 0 gives black and white
  int adjustGamma = 0;
  double gamma = 1.0;
  LevelsStyle levelsStyle = LevelsStyle::None;
  int blackPoint = 0;              ///< 0..255
  double midPoint = 1.0;           ///< 0.01..9.99
  int whitePoint = 255;            ///< 0..255
  double blackPointPercent = 0.0;  ///< of the pixels clipped to black by automatic levels
  double whitePointPercent = 0.0;
  int resize = 0;
  int resizeWidth = 0;  ///< of the bounding box, in pixels whatever the unit shown
  int resizeHeight = 0;
  ResizeUnits resizeUnits = ResizeUnits::Pixels;
  int resizeDpi = 240;
  int sharpen = 0;
  SharpenMethod sharpenMethod = SharpenMethod::UnsharpMask;
  int hqSharpenAmount = 75;  ///< percent
  double usmRadius = 0.5;
  double usmAmount = 0.7;     ///< the multiplier
  double usmThreshold = 0.0;  ///< percent

  int sameWhiteBalance = 3;  ///< the first image's white balance for all images of the run

  // Cameras of the EOS-1D family
  int sharpnessLevel = 3;
  int sharpnessObject = 3;
  int colourMatrix = 0;  ///< 0 as shot, 1..5
  int colourTemperature1D = 5800;
  int falseResolutionFilter = 0;

  int noiseBlending = 0;  ///< 0 off, 50 low, 75 normal, 95 high
  int photoEffect = 0;    ///< -1 as shot, 0 off, 1 vivid .. 6 custom
  int smarSetting = 0;    ///< carried, without effect

  // Cameras of the EOS 10D family
  int colourSpace = 0;  ///< 0 as shot, 1 sRGB, 2 AdobeRGB
  int colourTemperature10D = 5800;

  RawDevelopParams develop = {};  ///< zero when a file is about to be shown in a dialog, filled by it

  bool operator==(const RawConversionSettings&) const = default;
};

/// The values of the development that a dialog shows and the main window remembers.
struct RawDialogValues {
  int contrast = 0;
  int saturation = 0;
  int sharpness = 0;
  int tone = kAsShot;
  int exposureCompensation = 0;  ///< tenths of a stop
  int whiteBalance = kAsShot;
  WhitePoint customPoint = {};
  int photoEffect = 0;

  bool operator==(const RawDialogValues&) const = default;
};

}  // namespace ml::rawconvert
