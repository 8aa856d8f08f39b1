#pragma once

namespace ml::rawconvert {

/// How a developed picture is to look, beside its white balance. Levels count in the steps of the cameras: 0 is normal,
/// below weaker, above stronger; nothing is "as shot" any more.
struct PictureLook {
  double contrast = 0;    ///< -2..2
  double saturation = 0;  ///< -2..2
  double tone = 0;        ///< -2 towards red .. 2 towards yellow
  enum class Colours { All, Grey, Sepia } colours = Colours::All;
  enum class Space { Srgb, AdobeRgb } space = Space::Srgb;
  double sharpening = 0;     ///< amount, 0 none; see SharpeningOfLevel
  int sharpeningRadius = 3;  ///< 1 very coarse .. 5 very fine
  bool falseColourFilter = true;
  int exposureTenths = 0;  ///< of a stop
  /// Light as the sensor saw it: only white balance, colours, exposure and the false colour filter count.
  bool linear = false;

  bool operator==(const PictureLook&) const = default;
};

/// From sharpness -2..2 or kNoSharpening.
double SharpeningOfLevel(int level);
/// From the EOS-1D family's 0 off .. 5 very strong.
double SharpeningOfEdgeLevel(int level);
/// Changes contrast, saturation, colours and sharpening as the photo effect 0 Off .. 5 Black and White does.
void ApplyPhotoEffect(PictureLook& look, int effect);
/// The colour matrices 1..5 of the EOS-1D family.
void ApplyColourMatrix(PictureLook& look, int matrix);

}  // namespace ml::rawconvert
