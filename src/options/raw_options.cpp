#include "options/raw_options.h"

namespace ml::options {
namespace {

using rawconvert::RawConversionSettings;
using rawconvert::RawDialogValues;
using settings::RawSettings;

/// A member that both have, with the same meaning.
template <class A, class B>
struct Pair {
  A ours;
  B stored;
};
template <class A, class B>
Pair(A, B) -> Pair<A, B>;

template <class Visit>
void ForPlainPairs(const Visit& visit) {
  using C = RawConversionSettings;
  using S = RawSettings;
  visit(Pair{&C::falseColourFilter, &S::falseColourFilter});
  visit(Pair{&C::postProcess, &S::postProcess});
  visit(Pair{&C::adjustSaturation, &S::adjustSaturation});
  visit(Pair{&C::saturation, &S::saturation});
  visit(Pair{&C::adjustGamma, &S::adjustGamma});
  visit(Pair{&C::gamma, &S::gamma});
  visit(Pair{&C::blackPoint, &S::blackPoint});
  visit(Pair{&C::midPoint, &S::midPoint});
  visit(Pair{&C::whitePoint, &S::whitePoint});
  visit(Pair{&C::blackPointPercent, &S::blackPointPercent});
  visit(Pair{&C::whitePointPercent, &S::whitePointPercent});
  visit(Pair{&C::resize, &S::resize});
  visit(Pair{&C::resizeWidth, &S::resizeWidth});
  visit(Pair{&C::resizeHeight, &S::resizeHeight});
  visit(Pair{&C::resizeDpi, &S::resizeDpi});
  visit(Pair{&C::sharpen, &S::sharpen});
  visit(Pair{&C::hqSharpenAmount, &S::hqSharpenAmount});
  visit(Pair{&C::usmRadius, &S::usmRadius});
  visit(Pair{&C::usmAmount, &S::usmAmount});
  visit(Pair{&C::usmThreshold, &S::usmThreshold});
  visit(Pair{&C::sameWhiteBalance, &S::sameWhiteBalance});
  visit(Pair{&C::sharpnessLevel, &S::sharpnessLevel});
  visit(Pair{&C::sharpnessObject, &S::sharpnessObject});
  visit(Pair{&C::colourMatrix, &S::colourMatrix});
  visit(Pair{&C::falseResolutionFilter, &S::falseResolutionFilter});
  visit(Pair{&C::noiseBlending, &S::noiseBlending});
  visit(Pair{&C::photoEffect, &S::photoEffect});
  visit(Pair{&C::colourSpace, &S::colourSpace});
  visit(Pair{&C::colourTemperature10D, &S::colourTemperature});
}

template <class Visit>
void ForDialogPairs(const Visit& visit) {
  visit(Pair{&RawDialogValues::contrast, &RawSettings::developContrast});
  visit(Pair{&RawDialogValues::saturation, &RawSettings::developSaturation});
  visit(Pair{&RawDialogValues::sharpness, &RawSettings::developSharpness});
  visit(Pair{&RawDialogValues::tone, &RawSettings::developTone});
  visit(Pair{&RawDialogValues::photoEffect, &RawSettings::photoEffect});
}

/// A stored number that no enumerator has counts as the first.
template <class Enum>
Enum Known(int value, Enum last) {
  return value < 0 || value > static_cast<int>(last) ? Enum{} : static_cast<Enum>(value);
}

}  // namespace

RawConversionSettings RawConversionSettingsOf(const settings::Settings& settings) {
  const auto& raw = settings.raw;
  RawConversionSettings result;
  ForPlainPairs([&](const auto& pair) { result.*pair.ours = raw.*pair.stored; });
  result.method = Known(raw.method, rawconvert::Method::Combined);
  result.levelsStyle = Known(raw.levelsStyle, rawconvert::LevelsStyle::Manual);
  result.resizeUnits = Known(raw.resizeUnits, rawconvert::ResizeUnits::Centimetres);
  result.sharpenMethod = Known(raw.sharpenMethod, rawconvert::SharpenMethod::HqStyle);
  return result;
}

void PutRawConversionSettings(const RawConversionSettings& from, settings::Settings& settings) {
  auto& raw = settings.raw;
  ForPlainPairs([&](const auto& pair) { raw.*pair.stored = from.*pair.ours; });
  raw.method = static_cast<int>(from.method);
  raw.levelsStyle = static_cast<int>(from.levelsStyle);
  raw.resizeUnits = static_cast<int>(from.resizeUnits);
  raw.sharpenMethod = static_cast<int>(from.sharpenMethod);
}

RawDialogValues RawDialogValuesOf(const settings::Settings& settings) {
  RawDialogValues result;
  ForDialogPairs([&](const auto& pair) { result.*pair.ours = settings.raw.*pair.stored; });
  return result;
}

void PutRawDialogValues(const RawDialogValues& from, settings::Settings& settings) {
  ForDialogPairs([&](const auto& pair) { settings.raw.*pair.stored = from.*pair.ours; });
}

}  // namespace ml::options
