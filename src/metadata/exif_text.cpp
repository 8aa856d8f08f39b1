#include "metadata/exif_text.h"

#include <span>

#include "metadata/exif_text_values.h"

namespace ml::metadata {
namespace {

using namespace text_value;
using D = ExifData;

/// One line: `label`, the value, `tail`. A value that is empty leaves the line out.
struct TextRow {
  std::string_view label;
  std::string (*value)(const TextContext& context);
  std::string_view tail = {};
};

constexpr TextRow kProperties[] = {
    {"File: ", Field<&D::displayPath>},
    {"File size: ", FileSize},
    {"Image Serial Number: ", ImageNumber},
    {"Camera Model: ", Field<&D::model>},
    {"Camera serial number: ", Field<&D::bodySerial>},
    {"Firmware: ", Field<&D::firmware>},
    {"Owner: ", Field<&D::owner>},
    {"Date/Time: ", Field<&D::dateTime>},
    {"Copyright: ", Field<&D::copyright>},
    {"Shutter speed: ", Field<&D::shutterSpeed>, " sec"},
    {"Aperture: ", Field<&D::aperture>},
    {"Exposure mode: ", Field<&D::exposureMode>},
    {"Exposure compensation: ", Stops<&D::exposureCompensation>},
    {"AEB shot: ", AebShot},
    {"AEB compensation: ", AebCompensation},
    {"Total Exp comp: ", TotalCompensation},
    {"Flash: ", Field<&D::flash>},
    {"Flash EF guide number: ", FlashGuideNumber},
    {"Flash exposure compensation: ", FlashCompensation},
    {"Metering mode: ", Field<&D::meteringMode>},
    {"Drive mode: ", Field<&D::driveMode>},
    {"Self-timer: ", SelfTimer, " secs"},
    {"ISO: ", Field<&D::iso>},
    {"Lens: ", Lens},
    {"Focal length: ", FocalLength, "mm"},
    {"Focal length: ", FocalLength35, "mm (in 35mm film)"},
    {"Digital zoom: ", Field<&D::digitalZoom>},
    {"Subject distance: ", SubjectDistance, " m"},
    {"Image Stabilisation: ", ImageStabilisation},
    {"Macro focus: ", MacroFocus},
    {"AF mode: ", Field<&D::afMode>},
    {"Focus point: ", Field<&D::focusPoint>},
    {"Image size: ", ImageSize},
    {"Rotation: ", Rotation},
    {"Image quality: ", Field<&D::imageQuality>},
    {"White balance: ", Field<&D::whiteBalance>},
    {"", ColorMatrix},
    {"Color mode: ", Field<&D::colorMode>},
    {"Color space: ", Field<&D::colorSpace>},
    {"Saturation: ", Field<&D::saturation>},
    {"Sharpness: ", Field<&D::sharpness>},
    {"Contrast: ", Field<&D::contrast>},
    {"Picture Effect: ", Field<&D::pictureEffect>},
    {"Sharpness level: ", Field<&D::sharpnessLevel>},
    {"Sharpness pattern: ", Field<&D::sharpnessPattern>},
    {"Tone: ", Field<&D::tone>},
    {"Gamma: ", Field<&D::gamma>},
    {"Noise reduction: ", Field<&D::noiseReduction>},
    {"Hue adjustment: ", HueAdjustment},
    {"Color profile: ", Field<&D::iccProfileName>},
    {"", Field<&D::customFunctions>},
    {"User comments:\n\"", Trimmed<&D::comment>, "\""},
    {"Image description:\n\"", OtherDescription, "\""},
    {"", Warning},
};

constexpr TextRow kSummary[] = {
    {"", Field<&D::dateTime>},
    {"", FocalLengthAndLens},
    {"", FocalLength35, "mm (in 35mm film)"},
    {"Digital zoom: ", Field<&D::digitalZoom>},
    {"Subject dist: ", SubjectDistance, "m"},
    {"", ShutterAndAperture},
    {"Mode: ", Field<&D::exposureMode>},
    {"Metering: ", Field<&D::meteringMode>},
    {"Exp comp: ", Stops<&D::exposureCompensation>},
    {"AEB shot: ", AebShot},
    {"AEB comp: ", AebCompensation},
    {"Total Exp comp: ", TotalCompensation},
    {"ISO: ", Field<&D::iso>},
    {"AF mode: ", Field<&D::afMode>},
    {"Drive: ", ShortDriveMode},
    {"Self-timer: ", SelfTimer, " secs"},
    {"White balance: ", Field<&D::whiteBalance>},
    {"", ColorMatrix},
    {"Color mode: ", Field<&D::colorMode>},
    {"Flash: ", Field<&D::flash>},
    {"Flash exp comp: ", FlashCompensation},
    {"File size: ", FileSize},
    {"Image size: ", ImageSize},
    {"Color space: ", Field<&D::colorSpace>},
    {"Saturation: ", Field<&D::saturation>},
    {"Sharpness: ", Field<&D::sharpness>},
    {"Contrast: ", Field<&D::contrast>},
    {"Picture Effect: ", Field<&D::pictureEffect>},
    {"Sharpness level: ", Field<&D::sharpnessLevel>},
    {"Sharpness pattern: ", Field<&D::sharpnessPattern>},
    {"Tone: ", Field<&D::tone>},
    {"Noise reduction: ", Field<&D::noiseReduction>},
    {"Color profile: ", Field<&D::iccProfileName>},
    {"", Field<&D::customFunctions>},
    {"", Warning},
};

constexpr TextRow kShortSummary[] = {
    {"", Field<&D::dateTime>},
    {"Focal length: ", FocalLength, "mm"},
    {"Lens: ", Lens},
    {"Digital zoom: ", Field<&D::digitalZoom>},
    {"", ShutterAndAperture},
    {"Mode: ", Field<&D::exposureMode>},
    {"ISO: ", Field<&D::iso>},
    {"AF mode: ", Field<&D::afMode>},
    {"White balance: ", Field<&D::whiteBalance>},
    {"Flash: ", Field<&D::flash>},
    {"File size: ", FileSize},
    {"Image size: ", ImageSize},
    {"", Warning},
};

std::string Lines(std::span<const TextRow> rows, const ExifData& data, const platform::LocaleText& locale) {
  const TextContext context{data, locale};
  std::string text;
  for (const auto& row : rows) {
    const auto value = row.value(context);
    if (value.empty()) continue;
    if (!text.empty()) text += '\n';
    text.append(row.label).append(value).append(row.tail);
  }
  return text;
}

/// Fields with line ends of their own may leave some at either end.
std::string WithoutOuterLineEnds(const std::string& text) {
  const auto first = text.find_first_not_of('\n');
  return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of('\n') - first + 1);
}

}  // namespace

std::string GetPropertiesText(ExifData& data, const platform::LocaleText& locale) {
  if (CameraClassOf(data) != CameraClass::D30 && data.meteringMode == "Center") {
    data.meteringMode = "Center-weighted average";
  }
  return Lines(kProperties, data, locale);
}

std::string GetSummaryText(const ExifData& data, const platform::LocaleText& locale) {
  return WithoutOuterLineEnds(Lines(kSummary, data, locale));
}

std::string GetShortSummaryText(const ExifData& data, const platform::LocaleText& locale) {
  return WithoutOuterLineEnds(Lines(kShortSummary, data, locale));
}

}  // namespace ml::metadata
