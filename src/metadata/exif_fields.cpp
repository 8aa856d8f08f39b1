#include "metadata/exif_fields.h"

#include <type_traits>

namespace ml::metadata {
namespace {

template <auto Member>
ExifFieldValue Of(const ExifData& data) {
  const auto& value = data.*Member;
  using Value = std::remove_cvref_t<decltype(value)>;
  if constexpr (std::is_integral_v<Value> && !std::is_same_v<Value, bool>) {
    return static_cast<std::int64_t>(value);
  } else {
    return value;
  }
}

using E = ExifData;
constexpr ExifFieldRow kFields[] = {
    {"displayPath", Of<&E::displayPath>},
    {"fileSize", Of<&E::fileSize>},
    {"shootingTime", Of<&E::shootingTime>},
    {"exifInvalid", Of<&E::exifInvalid>},
    {"isEos1DRaw", Of<&E::isEos1DRaw>},
    {"tiffThumbnailOnly", Of<&E::tiffThumbnailOnly>},
    {"dateTime", Of<&E::dateTime>},
    {"dateTimeOriginal", Of<&E::dateTimeOriginal>},
    {"dateTimeDigitized", Of<&E::dateTimeDigitized>},
    {"make", Of<&E::make>},
    {"model", Of<&E::model>},
    {"firmware", Of<&E::firmware>},
    {"software", Of<&E::software>},
    {"owner", Of<&E::owner>},
    {"copyright", Of<&E::copyright>},
    {"bodySerial", Of<&E::bodySerial>},
    {"imageNumber", Of<&E::imageNumber>},
    {"customFunctions", Of<&E::customFunctions>},
    {"exposureMode", Of<&E::exposureMode>},
    {"shutterSpeed", Of<&E::shutterSpeed>},
    {"aperture", Of<&E::aperture>},
    {"maxAperture", Of<&E::maxAperture>},
    {"iso", Of<&E::iso>},
    {"isoShort", Of<&E::isoShort>},
    {"exposureCompensation", Of<&E::exposureCompensation>},
    {"totalExposureCompensation", Of<&E::totalExposureCompensation>},
    {"hasTotalExposureCompensation", Of<&E::hasTotalExposureCompensation>},
    {"aebCompensation", Of<&E::aebCompensation>},
    {"aebShot", Of<&E::aebShot>},
    {"meteringMode", Of<&E::meteringMode>},
    {"flash", Of<&E::flash>},
    {"flashGuideNumber", Of<&E::flashGuideNumber>},
    {"flashCompensation", Of<&E::flashCompensation>},
    {"focalLength", Of<&E::focalLength>},
    {"lensMinFocal", Of<&E::lensMinFocal>},
    {"lensMaxFocal", Of<&E::lensMaxFocal>},
    {"focalLength35", Of<&E::focalLength35>},
    {"subjectDistance", Of<&E::subjectDistance>},
    {"focusPoint", Of<&E::focusPoint>},
    {"focusPointCode", Of<&E::focusPointCode>},
    {"afMode", Of<&E::afMode>},
    {"macroFocus", Of<&E::macroFocus>},
    {"digitalZoom", Of<&E::digitalZoom>},
    {"imageStabilisation", Of<&E::imageStabilisation>},
    {"driveMode", Of<&E::driveMode>},
    {"selfTimer", Of<&E::selfTimer>},
    {"continuousFrame", Of<&E::continuousFrame>},
    {"stitchShot", Of<&E::stitchShot>},
    {"imageWidth", Of<&E::imageWidth>},
    {"imageHeight", Of<&E::imageHeight>},
    {"orientation", Of<&E::orientation>},
    {"userRotation", Of<&E::userRotation>},
    {"samplesPerPixel", Of<&E::samplesPerPixel>},
    {"imageQuality", Of<&E::imageQuality>},
    {"whiteBalance", Of<&E::whiteBalance>},
    {"contrast", Of<&E::contrast>},
    {"saturation", Of<&E::saturation>},
    {"sharpness", Of<&E::sharpness>},
    {"tone", Of<&E::tone>},
    {"pictureEffect", Of<&E::pictureEffect>},
    {"pictureEffectCode", Of<&E::pictureEffectCode>},
    {"colorMatrix", Of<&E::colorMatrix>},
    {"colorMode", Of<&E::colorMode>},
    {"colorSpace", Of<&E::colorSpace>},
    {"noiseReduction", Of<&E::noiseReduction>},
    {"sharpnessLevel", Of<&E::sharpnessLevel>},
    {"sharpnessPattern", Of<&E::sharpnessPattern>},
    {"gamma", Of<&E::gamma>},
    {"hueAdjustment", Of<&E::hueAdjustment>},
    {"hasIccProfile", Of<&E::hasIccProfile>},
    {"iccProfileName", Of<&E::iccProfileName>},
    {"rawColorMatrix", Of<&E::rawColorMatrix>},
    {"rawContrast", Of<&E::rawContrast>},
    {"rawSharpness", Of<&E::rawSharpness>},
    {"whiteBalanceCode", Of<&E::whiteBalanceCode>},
    {"comment", Of<&E::comment>},
    {"imageDescription", Of<&E::imageDescription>},
    {"littleEndian", Of<&E::littleEndian>},
    {"ifd0EntryCount", Of<&E::ifd0EntryCount>},
    {"exifIfdEntryCount", Of<&E::exifIfdEntryCount>},
};

}  // namespace

std::span<const ExifFieldRow> ExifFields() { return kFields; }

bool HasContent(const ExifFieldValue& value) {
  return std::visit([](const auto& known) { return known != std::remove_cvref_t<decltype(known)>(); }, value);
}

}  // namespace ml::metadata
