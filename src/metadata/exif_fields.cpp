#include "metadata/exif_fields.h"

#include <type_traits>

#include "platform/numbers.h"

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
using G = ShootingGroup;
constexpr ExifFieldRow kFields[] = {
    {"displayPath", Of<&E::displayPath>},
    {"fileSize", Of<&E::fileSize>},
    {"shootingTime", Of<&E::shootingTime>},
    {"exifInvalid", Of<&E::exifInvalid>, "EXIF data invalid", G::File},
    {"isEos1DRaw", Of<&E::isEos1DRaw>, "Raw file of an EOS-1D", G::File},
    {"tiffThumbnailOnly", Of<&E::tiffThumbnailOnly>, "Described by its thumbnail only", G::File},
    {"dateTime", Of<&E::dateTime>},
    {"dateTimeOriginal", Of<&E::dateTimeOriginal>, "Date/Time original", G::Image},
    {"dateTimeDigitized", Of<&E::dateTimeDigitized>, "Date/Time digitized", G::Image},
    {"make", Of<&E::make>, "Camera make", G::Camera},
    {"model", Of<&E::model>},
    {"firmware", Of<&E::firmware>},
    {"software", Of<&E::software>, "Software", G::Image},
    {"owner", Of<&E::owner>},
    {"copyright", Of<&E::copyright>},
    {"bodySerial", Of<&E::bodySerial>},
    {"imageNumber", Of<&E::imageNumber>},
    {"customFunctions", Of<&E::customFunctions>},
    {"exposureMode", Of<&E::exposureMode>},
    {"shutterSpeed", Of<&E::shutterSpeed>},
    {"aperture", Of<&E::aperture>},
    {"maxAperture", Of<&E::maxAperture>, "Maximum aperture", G::Lens},
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
    {"focusPointCode", Of<&E::focusPointCode>, "Focus point code", G::Lens},
    {"afMode", Of<&E::afMode>},
    {"macroFocus", Of<&E::macroFocus>},
    {"digitalZoom", Of<&E::digitalZoom>},
    {"imageStabilisation", Of<&E::imageStabilisation>},
    {"driveMode", Of<&E::driveMode>},
    {"selfTimer", Of<&E::selfTimer>},
    {"continuousFrame", Of<&E::continuousFrame>, "Continuous frame", G::Exposure},
    {"stitchShot", Of<&E::stitchShot>, "Stitch or focus code", G::Exposure},
    {"imageWidth", Of<&E::imageWidth>},
    {"imageHeight", Of<&E::imageHeight>},
    {"orientation", Of<&E::orientation>, "Orientation", G::Image},
    {"userRotation", Of<&E::userRotation>, "Turned since shooting, degrees", G::Image},
    {"samplesPerPixel", Of<&E::samplesPerPixel>, "Samples per pixel", G::Image},
    {"imageQuality", Of<&E::imageQuality>},
    {"whiteBalance", Of<&E::whiteBalance>},
    {"contrast", Of<&E::contrast>},
    {"saturation", Of<&E::saturation>},
    {"sharpness", Of<&E::sharpness>},
    {"tone", Of<&E::tone>},
    {"pictureEffect", Of<&E::pictureEffect>},
    {"pictureEffectCode", Of<&E::pictureEffectCode>, "Picture effect code", G::Maker},
    {"colorMatrix", Of<&E::colorMatrix>},
    {"colorMode", Of<&E::colorMode>},
    {"colorSpace", Of<&E::colorSpace>},
    {"noiseReduction", Of<&E::noiseReduction>},
    {"sharpnessLevel", Of<&E::sharpnessLevel>},
    {"sharpnessPattern", Of<&E::sharpnessPattern>},
    {"gamma", Of<&E::gamma>},
    {"hueAdjustment", Of<&E::hueAdjustment>},
    {"hasIccProfile", Of<&E::hasIccProfile>, "Color profile embedded", G::Colour},
    {"iccProfileName", Of<&E::iccProfileName>},
    {"rawColorMatrix", Of<&E::rawColorMatrix>, "Raw color matrix", G::Maker},
    {"rawContrast", Of<&E::rawContrast>, "Raw contrast", G::Maker},
    {"rawSharpness", Of<&E::rawSharpness>, "Raw sharpness", G::Maker},
    {"whiteBalanceCode", Of<&E::whiteBalanceCode>, "White balance code", G::Maker},
    {"comment", Of<&E::comment>},
    {"imageDescription", Of<&E::imageDescription>},
    {"littleEndian", Of<&E::littleEndian>, "Low byte first", G::File},
    {"ifd0EntryCount", Of<&E::ifd0EntryCount>, "Entries of the first directory", G::File},
    {"exifIfdEntryCount", Of<&E::exifIfdEntryCount>, "Entries of the EXIF directory", G::File},
};

}  // namespace

std::span<const ExifFieldRow> ExifFields() { return kFields; }

bool HasContent(const ExifFieldValue& value) {
  return std::visit([](const auto& known) { return known != std::remove_cvref_t<decltype(known)>(); }, value);
}

std::string FieldText(const ExifFieldValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* number = std::get_if<double>(&value)) return platform::ShortNumber(*number);
  return std::get<bool>(value) ? "yes" : "no";
}

}  // namespace ml::metadata
