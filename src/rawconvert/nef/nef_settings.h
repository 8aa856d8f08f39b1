#pragma once

namespace ml::rawconvert {

enum class NefTone {
  Normal,  ///< saturation and gamma 2.2
  Linear   ///< in proportion with the light
};

/// Values of NefSettings::whiteBalance; all others stand for "as shot".
namespace nef_white_balance {
inline constexpr int kAsShot = 255;
inline constexpr int kSunny = 1, kCloudy = 2, kShade = 3, kFlash = 4, kFluorescent = 5, kIncandescent = 6;
inline constexpr int kCustom = -1;           ///< what is grey at the custom point ..
inline constexpr int kCustomListed = 32768;  ///< .. and the same as lists of choices hold it
}  // namespace nef_white_balance

/// How a NEF file is to be developed.
struct NefSettings {
  NefTone tone = NefTone::Normal;
  int whiteBalance = nef_white_balance::kAsShot;
  int customX = 0, customY = 0;  ///< in pixels of the developed picture; brought into the frame
  int saturation = 0;            ///< -1 less, 1 more, all others usual
};

}  // namespace ml::rawconvert
