#pragma once

#include "metadata/code_words.h"

/// What the camera settings are shown as.
namespace ml::metadata {

inline constexpr CodeWord kMacroWords[] = {{1, "On"}};

inline constexpr CodeWord kQualityWords[] = {
    {1, "Lossless"}, {2, "Normal"}, {3, "Fine"}, {4, "Raw"}, {5, "Super fine"}};

inline constexpr CodeWord kDriveWords[] = {{0, "Single frame shooting"}};

inline constexpr std::uint16_t kAfSingleOrContinuous = 4;
inline constexpr CodeWord kAfWords[] = {{0, "One-shot AF"},  {1, "AI Servo AF"},   {2, "AI Focus AF"},
                                        {3, "Manual Focus"}, {5, "Continuous AF"}, {6, "Manual Focus"}};

inline constexpr CodeWord kCanonLevelWords[] = {{65534, "Low2"}, {65535, "Low"}, {1, "High"}, {2, "High2"}};

inline constexpr CodeWord kIsoWords[] = {{15, "Auto"}, {16, "50"}, {17, "100"}, {18, "200"}, {19, "400"}, {20, "800"}};

inline constexpr CodeWord kMeteringWords[] = {{0, "Center"},     {1, "Spot"},    {2, "Average"},
                                              {3, "Evaluative"}, {4, "Partial"}, {5, "Center-weighted average"}};

inline constexpr std::uint16_t kExposureByScene = 0;
inline constexpr CodeWord kExposureWords[] = {{1, "Program"}, {2, "Tv"}, {3, "Av"}, {4, "Manual"}, {5, "A-DEP"}};
inline constexpr CodeWord kSceneWords[] = {
    {0, "Auto"},        {1, "Manual"},          {2, "Landscape"}, {3, "Fast shutter"}, {4, "Slow shutter"},
    {5, "Night scene"}, {6, "Black and white"}, {7, "Sepia"},     {8, "Portrait"},     {9, "Sports"},
    {10, "Close-up"},   {11, "Pan focus"},      {12, "Vivid"},    {13, "Neutral"},     {14, "Black and white"}};

inline constexpr CodeWord kPictureEffectWords[] = {{0, "Normal"},         {1, "Vivid"}, {2, "Neutral"},
                                                   {3, "Low sharpening"}, {4, "Sepia"}, {5, "Black & white"}};

/// Of the film-like tones of the EOS D60, and of the colour tones of those after it.
inline constexpr CodeWord kD60ToneWords[] = {{0, "Normal"}, {1, "Yellow"}};
inline constexpr CodeWord kToneWords[] = {{0, "Normal"}, {1, "+1"}, {2, "+2"}, {65534, "-2"}, {65535, "-1"}};

}  // namespace ml::metadata
