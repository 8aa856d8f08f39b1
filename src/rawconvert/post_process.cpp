#include "rawconvert/post_process.h"

#include <optional>

#include "imagefiles/size_fitting.h"
#include "imaging/magick/magick_image.h"
#include "imaging/operators/auto_levels.h"
#include "imaging/operators/picture_operators.h"
#include "platform/errors.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

using imaging::MagickImage;
using imaging::PixelBuffer;

/// Kept: the width of the unsharp mask's bell is always this, whatever its radius.
constexpr double kUnsharpSigma = 1.0;

/// Where a run of steps is, and whether it goes on.
struct Steps {
  platform::Progress& progress;
  const std::stop_token& stop;

  void Begin(const char* status = nullptr) const {
    if (stop.stop_requested()) throw platform::Cancelled();
    if (status != nullptr) progress.text(status);
  }
};

std::string LevelsText(const PixelBuffer& pixels, const RawConversionSettings& settings) {
  if (settings.levelsStyle == LevelsStyle::Manual)
    return imaging::ManualLevelsText({settings.blackPoint, settings.whitePoint}, settings.midPoint);
  const auto count = static_cast<std::int64_t>(pixels.width) * pixels.height;
  return imaging::AutoLevelsText(imaging::AutoLevelsPoints(imaging::HistogramLuma(pixels), count,
                                                           {settings.blackPointPercent, settings.whitePointPercent}));
}

void AdjustTones(MagickImage& image, const PixelBuffer& pixels, const RawConversionSettings& settings,
                 const Steps& steps) {
  if (settings.levelsStyle != LevelsStyle::None) {
    steps.Begin(settings.levelsStyle == LevelsStyle::Auto ? messages::kAutoLevels : messages::kManualLevels);
    image.Level(LevelsText(pixels, settings));
  }
  if (settings.adjustSaturation != 0 && settings.saturation != 100) {
    steps.Begin();
    imaging::ApplySaturation(image, settings.saturation);
  }
  if (settings.adjustGamma != 0) {
    steps.Begin();
    imaging::ApplyGamma(image, settings.gamma);
  }
}

std::optional<MagickImage> Hand(const PixelBuffer& pixels) {
  try {
    return MagickImage::FromPixels(pixels);
  } catch (const platform::LibraryError&) {
    return std::nullopt;  // kept: the picture is then written as it was developed
  }
}

}  // namespace

bool PostProcesses(const RawConversionSettings& settings) {
  return settings.postProcess != 0 &&
         (settings.adjustSaturation != 0 || settings.adjustGamma != 0 || settings.levelsStyle != LevelsStyle::None ||
          settings.resize != 0 || settings.sharpen != 0);
}

void PostProcess(PixelBuffer& pixels, const RawConversionSettings& settings, int bytesPerSample,
                 platform::Progress& progress, const std::stop_token& stop) {
  const Steps steps{progress, stop};
  steps.Begin();
  auto image = Hand(pixels);
  if (!image) return;
  AdjustTones(*image, pixels, settings, steps);
  if (settings.resize != 0) {
    steps.Begin(messages::kResizing);
    const auto size =
        imagefiles::FillBox({image->Width(), image->Height()}, {settings.resizeWidth, settings.resizeHeight});
    image->Resize(size.width, size.height, imaging::ResizeFilter::Sinc);
  }
  steps.Begin();
  pixels = image->ToPixels(bytesPerSample);
  if (settings.sharpen == 0 || settings.sharpenMethod != SharpenMethod::UnsharpMask) return;
  steps.Begin(messages::kUnsharpMask);
  const imaging::UnsharpMask mask{.radius = settings.usmRadius,
                                  .sigma = kUnsharpSigma,
                                  .amount = settings.usmAmount,
                                  .threshold = settings.usmThreshold / 100};
  imaging::ApplyUnsharpMask(*image, pixels, mask, imaging::LastRow::Sharpened);
}

}  // namespace ml::rawconvert
