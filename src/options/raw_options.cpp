#include "options/raw_options.h"

#include <type_traits>

namespace ml::options {
namespace {

using rawconvert::RawConversionSettings;
using rawconvert::RawDialogValues;
using settings::RawSettings;

/// Calls `link(of the engine, of the settings)` for each pair of values that are the same one.
template <class Engine, class Stored, class Link>
void LinkSettings(Engine& engine, Stored& stored, const Link& link) {
  link(engine.method, stored.method);
  link(engine.falseColourFilter, stored.falseColourFilter);
  link(engine.postProcess, stored.postProcess);
  link(engine.adjustSaturation, stored.adjustSaturation);
  link(engine.saturation, stored.saturation);
  link(engine.adjustGamma, stored.adjustGamma);
  link(engine.gamma, stored.gamma);
  link(engine.levelsStyle, stored.levelsStyle);
  link(engine.blackPoint, stored.blackPoint);
  link(engine.midPoint, stored.midPoint);
  link(engine.whitePoint, stored.whitePoint);
  link(engine.blackPointPercent, stored.blackPointPercent);
  link(engine.whitePointPercent, stored.whitePointPercent);
  link(engine.resize, stored.resize);
  link(engine.resizeWidth, stored.resizeWidth);
  link(engine.resizeHeight, stored.resizeHeight);
  link(engine.resizeUnits, stored.resizeUnits);
  link(engine.resizeDpi, stored.resizeDpi);
  link(engine.sharpen, stored.sharpen);
  link(engine.sharpenMethod, stored.sharpenMethod);
  link(engine.hqSharpenAmount, stored.hqSharpenAmount);
  link(engine.usmRadius, stored.usmRadius);
  link(engine.usmAmount, stored.usmAmount);
  link(engine.usmThreshold, stored.usmThreshold);
  link(engine.sameWhiteBalance, stored.sameWhiteBalance);
  link(engine.sharpnessLevel, stored.sharpnessLevel);
  link(engine.sharpnessObject, stored.sharpnessObject);
  link(engine.colourMatrix, stored.colourMatrix);
  link(engine.falseResolutionFilter, stored.falseResolutionFilter);
  link(engine.noiseBlending, stored.noiseBlending);
  link(engine.photoEffect, stored.photoEffect);
  link(engine.colourSpace, stored.colourSpace);
  link(engine.colourTemperature10D, stored.colourTemperature);
}

template <class Engine, class Stored, class Link>
void LinkDialogValues(Engine& engine, Stored& stored, const Link& link) {
  link(engine.contrast, stored.developContrast);
  link(engine.saturation, stored.developSaturation);
  link(engine.sharpness, stored.developSharpness);
  link(engine.tone, stored.developTone);
  link(engine.photoEffect, stored.photoEffect);
}

/// Numbers of the settings are plain ones; some of the engine's have names.
constexpr auto kTake = [](auto& engine, const auto& stored) {
  engine = static_cast<std::remove_reference_t<decltype(engine)>>(stored);
};
constexpr auto kPut = [](const auto& engine, auto& stored) {
  stored = static_cast<std::remove_reference_t<decltype(stored)>>(engine);
};

}  // namespace

RawConversionSettings RawConversionSettingsOf(const settings::Settings& settings) {
  RawConversionSettings taken;
  LinkSettings(taken, settings.raw, kTake);
  return taken;
}

RawDialogValues RawDialogValuesOf(const settings::Settings& settings) {
  RawDialogValues taken;
  LinkDialogValues(taken, settings.raw, kTake);
  return taken;
}

void PutRawConversionSettings(const RawConversionSettings& from, settings::Settings& settings) {
  LinkSettings(from, settings.raw, kPut);
}

void PutRawDialogValues(const RawDialogValues& from, settings::Settings& settings) {
  LinkDialogValues(from, settings.raw, kPut);
}

}  // namespace ml::options
