#include "metadata/canon/known_fields.h"

namespace ml::metadata {
namespace {

using D = ExifData;

constexpr std::string D::*kTexts[] = {
    &D::model,        &D::firmware,     &D::owner,         &D::bodySerial, &D::customFunctions,
    &D::exposureMode, &D::aperture,     &D::shutterSpeed,  &D::iso,        &D::flash,
    &D::meteringMode, &D::focusPoint,   &D::afMode,        &D::macroFocus, &D::digitalZoom,
    &D::driveMode,    &D::imageQuality, &D::whiteBalance,  &D::contrast,   &D::saturation,
    &D::sharpness,    &D::tone,         &D::pictureEffect, &D::colorSpace, &D::comment};
constexpr double D::*kMeasures[] = {&D::exposureCompensation, &D::aebCompensation, &D::flashCompensation,
                                    &D::focalLength,          &D::lensMinFocal,    &D::lensMaxFocal,
                                    &D::subjectDistance,      &D::selfTimer};
constexpr std::int32_t D::*kNumbers[] = {&D::aebShot,    &D::focusPointCode, &D::continuousFrame,  &D::stitchShot,
                                         &D::imageWidth, &D::imageHeight,    &D::pictureEffectCode};

template <class Members>
void AddMembers(ExifData& data, const ExifData& from, const Members& members) {
  for (const auto member : members) {
    if (data.*member == std::remove_cvref_t<decltype(data.*member)>()) data.*member = from.*member;
  }
}

}  // namespace

void AddUnknownFields(ExifData& data, const ExifData& from) {
  AddMembers(data, from, kTexts);
  AddMembers(data, from, kMeasures);
  AddMembers(data, from, kNumbers);
  data.imageStabilisation |= from.imageStabilisation;
}

}  // namespace ml::metadata
