#include "rawconvert/normalise_settings.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "platform/numbers.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

constexpr int kMaxExposure = 20;
constexpr int kMinKelvin = 2800, kMaxKelvin = 10000;

int ToneFor(const CameraFamily& family, int tone) {
  const int most = family.isD60 ? 1 : family.is10D ? 2 : -1;
  return std::abs(tone) <= most ? tone : kAsShot;
}

/// Without the second steps in either direction.
int ThreeSteps(int level) { return std::abs(level) == 2 ? level / 2 : level; }

}  // namespace

int SharpnessFor(const CameraFamily& family, int sharpness) {
  return sharpness == kNoSharpening && !family.HasNoSharpening() ? -1 : sharpness;
}

int SnapNoiseBlending(int blending) {
  struct Step {
    int below, value;
  };
  for (const auto& step : {Step{30, 0}, Step{60, 50}, Step{80, 75}}) {
    if (blending < step.below) return step.value;
  }
  return 95;
}

int NormaliseColourTemperature(int kelvin) {
  // Clamped before the sum as well, which could leave the range of numbers.
  return std::clamp((std::clamp(kelvin, 0, kMaxKelvin) + 49) / 100 * 100, kMinKelvin, kMaxKelvin);
}

int ColourTemperatureOf(const metadata::ExifData& exif) {
  constexpr std::string_view front = "Color temp=";
  if (!exif.whiteBalance.starts_with(front)) return 0;
  return platform::LeadingInteger(std::string_view(exif.whiteBalance).substr(front.size()));
}

void NormaliseForDialog(RawConversionSettings& settings, RawDialogValues& values, const CameraFamily& family,
                        ConversionDialog dialog, const metadata::ExifData& exif) {
  values.tone = ToneFor(family, values.tone);
  values.exposureCompensation = std::clamp(values.exposureCompensation, -kMaxExposure, kMaxExposure);
  values.sharpness = SharpnessFor(family, values.sharpness);
  if (!family.is10D) {
    for (auto* level : {&values.contrast, &values.saturation, &values.sharpness}) *level = ThreeSteps(*level);
  }
  if (settings.resizeWidth < 1 || settings.resizeHeight < 1) {
    settings.resizeWidth = settings.resizeHeight = std::max(exif.imageWidth, exif.imageHeight);
  }
  settings.noiseBlending = SnapNoiseBlending(settings.noiseBlending);
  const int kelvin = ColourTemperatureOf(exif);
  if (dialog == ConversionDialog::Eos1D && kelvin >= kMinKelvin && kelvin <= kMaxKelvin) {
    settings.colourTemperature1D = kelvin;
  }
}

void SetDevelopValues(RawConversionSettings& settings, const RawDialogValues& values, const CameraFamily& family) {
  RawDevelopParams develop;
  develop.SetHeader();
  develop.SetContrast(values.contrast);
  develop.SetSaturation(values.saturation);
  develop.SetSharpness(values.sharpness);
  develop.SetFalseColourFilter(settings.falseColourFilter != 0);
  develop.SetTone(values.tone);
  develop.SetExposureCompensation(values.exposureCompensation);
  develop.SetWhiteBalance(values.whiteBalance);
  if (values.whiteBalance == kCustomWhiteBalance) develop.SetCustomPoint(values.customPoint);
  develop.SetPhotoEffect(values.photoEffect);
  if (family.is10D) develop.SetColourSpace(settings.colourSpace == 0 ? kAsShot : settings.colourSpace);
  settings.photoEffect = values.photoEffect;
  settings.develop = develop;
}

bool NeedsEightBitWarning(const CameraFamily& family, OutputFormat format, Method method) {
  return family.is8BitOnly && (FactsOf(format).bits16 || method != Method::Normal);
}

std::string EightBitWarning(const std::string& model) { return messages::EightBitOnly(model); }

}  // namespace ml::rawconvert
