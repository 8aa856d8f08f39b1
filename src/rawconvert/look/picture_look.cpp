#include "rawconvert/look/picture_look.h"

#include <algorithm>
#include <array>

#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {
namespace {

/// Of Low2, Low, Normal, High, High2: how much of a pixel's difference from its surroundings is added to it.
constexpr std::array kSharpening = {0.25, 0.45, 0.8, 1.2, 1.6};
/// Of off, very weak .. very strong.
constexpr std::array kEdgeSharpening = {0.0, 0.3, 0.55, 0.8, 1.2, 1.6};

struct EffectRow {
  double contrast, saturation;
  PictureLook::Colours colours;
  bool softer;
};
using Colours = PictureLook::Colours;
/// Of Off, Vivid, Neutral, Low sharpening, Sepia, Black and White. Kept: all of them, Off too, take the place of what
/// was set.
constexpr std::array kEffects = {EffectRow{0, 0, Colours::All, false},   EffectRow{1, 1.5, Colours::All, false},
                                 EffectRow{-1, -1, Colours::All, false}, EffectRow{0, 0, Colours::All, true},
                                 EffectRow{0, 0, Colours::Sepia, false}, EffectRow{0, 0, Colours::Grey, false}};

struct MatrixRow {
  double saturation, tone;
  PictureLook::Space space;
};
using Space = PictureLook::Space;
constexpr std::array kMatrices = {MatrixRow{0, 0, Space::Srgb}, MatrixRow{-0.5, 1, Space::Srgb},
                                  MatrixRow{1.5, 0, Space::Srgb}, MatrixRow{0, 0, Space::AdobeRgb},
                                  MatrixRow{-1.5, 0, Space::Srgb}};

}  // namespace

double SharpeningOfLevel(int level) {
  return level == kNoSharpening ? 0 : kSharpening[static_cast<std::size_t>(std::clamp(level + 2, 0, 4))];
}

double SharpeningOfEdgeLevel(int level) { return kEdgeSharpening[static_cast<std::size_t>(std::clamp(level, 0, 5))]; }

void ApplyPhotoEffect(PictureLook& look, int effect) {
  if (effect < 0 || effect >= static_cast<int>(kEffects.size())) return;
  const auto& row = kEffects[static_cast<std::size_t>(effect)];
  look.contrast = row.contrast;
  look.saturation = row.saturation;
  look.colours = row.colours;
  look.sharpening = SharpeningOfLevel(row.softer ? -1 : 0);
}

void ApplyColourMatrix(PictureLook& look, int matrix) {
  if (matrix < 1 || matrix > static_cast<int>(kMatrices.size())) return;
  const auto& row = kMatrices[static_cast<std::size_t>(matrix) - 1];
  look.saturation = row.saturation;
  look.tone = row.tone;
  look.space = row.space;
}

}  // namespace ml::rawconvert
