#include "rawconvert/develop_raw_file.h"

#include <utility>

#include "imaging/operators/combine_renders.h"
#include "platform/errors.h"
#include "rawconvert/capabilities.h"
#include "rawconvert/messages.h"
#include "rawconvert/nef/develop_nef.h"
#include "rawconvert/normalise_settings.h"
#include "rawconvert/picture_collection.h"

namespace ml::rawconvert {
namespace {

/// The sharpness of a render whose highlights are replaced.
constexpr int kLowSharpness = -1;

/// What one development is made of.
struct Order {
  const std::string& path;
  const metadata::ExifData& exif;
  CameraFamily family;
  RawConversionSettings& settings;
  DepthWish depth;
  const DevelopTools& tools;

  DevelopWatch Watch() const { return {.progress = &tools.progress, .stop = tools.stop}; }
};

NefSensor ReadSensor(const std::string& path, const DevelopWatch& watch) {
  try {
    return ReadNefSensor(path, watch);
  } catch (const platform::UserError& error) {
    throw UndevelopableRaw(error.what());
  }
}

DevelopedRaw DevelopNefFile(const Order& order) {
  const auto& develop = order.settings.develop;
  const auto sensor = ReadSensor(order.path, order.Watch());
  const auto point = develop.CustomPoint();
  const NefSettings settings{.tone = order.settings.method == Method::Linear ? NefTone::Linear : NefTone::Normal,
                             .whiteBalance = develop.WhiteBalance(),
                             .customX = point.x,
                             .customY = point.y,
                             .saturation = develop.Saturation()};
  return {DevelopNef(sensor, settings, order.Watch()), order.depth.output16};
}

CameraImageSettings CameraImageSettingsOf(const Order& order) {
  const auto& settings = order.settings;
  const auto& develop = settings.develop;
  // The first picture of a run is the one whose balance the others take: it has that of the settings.
  const bool reuse = settings.sameWhiteBalance != 0 && order.tools.developer.CameraImages().coefficients.Known();
  const auto point = develop.CustomPoint();
  return {.digitalGain = develop.ExposureCompensation(),
          .whiteBalance = reuse ? camera_white_balance::kReuse : develop.WhiteBalance(),
          .customX = point.x,
          .customY = point.y,
          .colourTemperature = settings.colourTemperature1D,
          .colourMatrix = static_cast<std::uint16_t>(settings.colourMatrix),
          .edgeLevel = static_cast<std::uint16_t>(settings.sharpnessLevel),
          .edgeObject = static_cast<std::uint16_t>(settings.sharpnessObject),
          .falseColourFilter = settings.falseColourFilter != 0,
          .falseResolutionFilter = settings.falseResolutionFilter != 0,
          .linear = settings.method == Method::Linear};
}

DevelopedRaw DevelopCameraImage(const Order& order) {
  CameraImage image(order.path, order.tools.developer.CameraImages());
  auto pixels = image.Develop(CameraImageSettingsOf(order), order.exif.model, order.depth.work16, order.Watch());
  const bool wide = pixels.bytesPerSample == 2;
  return {std::move(pixels), wide && order.depth.output16};
}

/// The record for the first render of a picture.
RawDevelopParams ParamsOf(const Order& order) {
  const auto& settings = order.settings;
  auto params = settings.develop;
  params.SetHeader();
  params.SetLinear(settings.method == Method::Linear);
  if (settings.method == Method::Combined) params.SetSharpness(kLowSharpness);
  params.SetFalseColourFilter(settings.falseColourFilter != 0);
  params.SetPhotoEffect(EffectInForce(settings.photoEffect, order.exif));
  params.SetSharpness(SharpnessFor(order.family, params.Sharpness()));
  return params;
}

std::optional<DevelopedRaw> DevelopWithSdk(const Order& order) {
  auto& settings = order.settings;
  PictureCollection collection(order.path, order.tools.developer.Development());
  if (!collection.HasPicture()) collection.SelectPicture(0);
  if (!collection.HasPicture()) return std::nullopt;

  auto params = ParamsOf(order);
  const auto code = order.depth.work16 ? OutputCode::Bits16 : OutputCode::Bits8;
  auto pixels =
      collection.Develop(params, {.output = code, .colourTemperature = settings.colourTemperature10D}, order.Watch());
  if (settings.sameWhiteBalance != 0) {
    params.SetWhiteBalance(kCustomWhiteBalance);
    settings.develop = params;
  }
  if (!order.depth.work16 || pixels.bytesPerSample == 1) return DevelopedRaw{std::move(pixels), false};

  if (MakesTwoRenders(order.family, settings.method)) {
    order.tools.progress.text(messages::kHighlights);
    order.tools.progress.NextPass();
    params.SetLinear(true);
    params.SetWhiteBalance(kCustomWhiteBalance);
    auto linear = collection.Develop(
        params, {.output = OutputCode::Bits16, .colourTemperature = settings.colourTemperature10D}, order.Watch());
    order.tools.progress.text(messages::kCombining);
    imaging::CombineRenders(pixels, linear, order.exif.model, order.tools.stop);
  }
  return DevelopedRaw{std::move(pixels), order.depth.output16};
}

}  // namespace

bool MakesTwoRenders(const CameraFamily& family, Method method) {
  return method == Method::Combined && PathOf(family) == DevelopPath::Development;
}

std::optional<DevelopedRaw> DevelopRawFile(const std::string& path, const metadata::ExifData& exif,
                                           RawConversionSettings& settings, const DepthWish& depth,
                                           const DevelopTools& tools) {
  const Order order{path, exif, FamilyOf(path, exif), settings, depth, tools};
  switch (PathOf(order.family)) {
    case DevelopPath::OwnDecoder:
      return DevelopNefFile(order);
    case DevelopPath::CameraImage:
      return DevelopCameraImage(order);
    case DevelopPath::Development:
      break;
  }
  return DevelopWithSdk(order);
}

}  // namespace ml::rawconvert
