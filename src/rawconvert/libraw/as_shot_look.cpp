#include "rawconvert/libraw/as_shot_look.h"

#include <algorithm>
#include <string_view>

#include "rawconvert/capabilities.h"

namespace ml::rawconvert {
namespace {

struct WordRow {
  std::string_view word;
  int level;
};
/// As the shooting data tell levels and tones; all others are normal.
constexpr WordRow kWords[] = {{"Low2", -2}, {"Low", -1}, {"High", 1}, {"High2", 2}, {"-2", -2},
                              {"-1", -1},   {"+1", 1},   {"+2", 2},   {"Red", -1},  {"Yellow", 1}};
constexpr int kAdobeRgb = 2;

int Level(int value, std::string_view word) {
  if (value != kAsShot) return value;
  const auto* row = std::ranges::find(kWords, word, &WordRow::word);
  return row == std::end(kWords) ? 0 : row->level;
}

}  // namespace

RawDevelopParams AsShotParams() {
  RawDevelopParams params;
  params.SetHeader();
  params.SetContrast(kAsShot);
  params.SetSaturation(kAsShot);
  params.SetSharpness(kAsShot);
  params.SetTone(kAsShot);
  params.SetWhiteBalance(kAsShot);
  params.SetPhotoEffect(-1);
  params.SetColourSpace(kAsShot);
  return params;
}

PictureLook LookOf(const RawDevelopParams& params, const metadata::ExifData& exif, const CameraFamily& family) {
  PictureLook look{.contrast = static_cast<double>(Level(params.Contrast(), exif.contrast)),
                   .saturation = static_cast<double>(Level(params.Saturation(), exif.saturation)),
                   .tone = static_cast<double>(Level(params.Tone(), exif.tone)),
                   .sharpening = SharpeningOfLevel(Level(params.Sharpness(), exif.sharpness)),
                   .falseColourFilter = params.FalseColourFilter(),
                   .exposureTenths = std::clamp(params.ExposureCompensation(), -20, 20),
                   .linear = params.Linear()};
  // An effect that was set for one camera stays in the settings and means nothing to others.
  const bool ofTheShot = params.PhotoEffect() < 0 && exif.pictureEffectCode > 0;
  if (family.hasPhotoEffects || ofTheShot) ApplyPhotoEffect(look, EffectInForce(params.PhotoEffect(), exif));
  const bool adobe =
      params.ColourSpace() == kAsShot ? exif.colorSpace == "AdobeRGB" : params.ColourSpace() == kAdobeRgb;
  if (adobe) look.space = PictureLook::Space::AdobeRgb;
  return look;
}

}  // namespace ml::rawconvert
