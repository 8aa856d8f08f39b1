#include "metadata/exif_text.h"

#include <span>
#include <utility>

#include "metadata/exif_text_values.h"

namespace ml::metadata {
namespace {

using namespace text_value;
using D = ExifData;
using G = ShootingGroup;

/// One line: `label`, the value, `tail`. A value that is empty leaves the line out.
struct TextRow {
  std::string_view label;
  std::string (*value)(const TextContext& context);
  std::string_view tail = {};
};

/// A line of the full text. The group None leaves out what a list of groups tells in another way.
struct PropertyRow {
  G group;
  TextRow line;
};

constexpr PropertyRow kProperties[] = {
    {G::File, {"File: ", Field<&D::displayPath>}},
    {G::File, {"File size: ", FileSize}},
    {G::Image, {"Image Serial Number: ", ImageNumber}},
    {G::Camera, {"Camera Model: ", Field<&D::model>}},
    {G::Camera, {"Camera serial number: ", Field<&D::bodySerial>}},
    {G::Camera, {"Firmware: ", Field<&D::firmware>}},
    {G::Camera, {"Owner: ", Field<&D::owner>}},
    {G::Image, {"Date/Time: ", Field<&D::dateTime>}},
    {G::Image, {"Copyright: ", Field<&D::copyright>}},
    {G::Exposure, {"Shutter speed: ", Field<&D::shutterSpeed>, " sec"}},
    {G::Exposure, {"Aperture: ", Field<&D::aperture>}},
    {G::Exposure, {"Exposure mode: ", Field<&D::exposureMode>}},
    {G::Exposure, {"Exposure compensation: ", Stops<&D::exposureCompensation>}},
    {G::Exposure, {"AEB shot: ", AebShot}},
    {G::Exposure, {"AEB compensation: ", AebCompensation}},
    {G::Exposure, {"Total Exp comp: ", TotalCompensation}},
    {G::Flash, {"Flash: ", Field<&D::flash>}},
    {G::Flash, {"Flash EF guide number: ", FlashGuideNumber}},
    {G::Flash, {"Flash exposure compensation: ", FlashCompensation}},
    {G::Exposure, {"Metering mode: ", Field<&D::meteringMode>}},
    {G::Exposure, {"Drive mode: ", Field<&D::driveMode>}},
    {G::Exposure, {"Self-timer: ", SelfTimer, " secs"}},
    {G::Exposure, {"ISO: ", Field<&D::iso>}},
    {G::Lens, {"Lens: ", Lens}},
    {G::Lens, {"Focal length: ", FocalLength, "mm"}},
    {G::Lens, {"Focal length: ", FocalLength35, "mm (in 35mm film)"}},
    {G::Lens, {"Digital zoom: ", Field<&D::digitalZoom>}},
    {G::Lens, {"Subject distance: ", SubjectDistance, " m"}},
    {G::Lens, {"Image Stabilisation: ", ImageStabilisation}},
    {G::Lens, {"Macro focus: ", MacroFocus}},
    {G::Lens, {"AF mode: ", Field<&D::afMode>}},
    {G::Lens, {"Focus point: ", Field<&D::focusPoint>}},
    {G::Image, {"Image size: ", ImageSize}},
    {G::Image, {"Rotation: ", Rotation}},
    {G::Image, {"Image quality: ", Field<&D::imageQuality>}},
    {G::Colour, {"White balance: ", Field<&D::whiteBalance>}},
    {G::Colour, {"", ColorMatrix}},
    {G::Colour, {"Color mode: ", Field<&D::colorMode>}},
    {G::Colour, {"Color space: ", Field<&D::colorSpace>}},
    {G::Maker, {"Saturation: ", Field<&D::saturation>}},
    {G::Maker, {"Sharpness: ", Field<&D::sharpness>}},
    {G::Maker, {"Contrast: ", Field<&D::contrast>}},
    {G::Maker, {"Picture Effect: ", Field<&D::pictureEffect>}},
    {G::Maker, {"Sharpness level: ", Field<&D::sharpnessLevel>}},
    {G::Maker, {"Sharpness pattern: ", Field<&D::sharpnessPattern>}},
    {G::Maker, {"Tone: ", Field<&D::tone>}},
    {G::Maker, {"Gamma: ", Field<&D::gamma>}},
    {G::Maker, {"Noise reduction: ", Field<&D::noiseReduction>}},
    {G::Colour, {"Hue adjustment: ", HueAdjustment}},
    {G::Colour, {"Color profile: ", Field<&D::iccProfileName>}},
    {G::None, {"", Field<&D::customFunctions>}},
    {G::Comment, {"User comments:\n\"", Trimmed<&D::comment>, "\""}},
    {G::Comment, {"Image description:\n\"", OtherDescription, "\""}},
    {G::None, {"", Warning}},
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

std::vector<PropertyLine> PropertyLines(ExifData& data, const platform::LocaleText& locale) {
  if (CameraClassOf(data) != CameraClass::D30 && data.meteringMode == "Center") {
    data.meteringMode = "Center-weighted average";
  }
  const TextContext context{data, locale};
  std::vector<PropertyLine> lines;
  for (const auto& [group, line] : kProperties) {
    auto value = line.value(context);
    if (!value.empty()) lines.push_back({group, line.label, std::move(value), line.tail});
  }
  return lines;
}

std::string GetPropertiesText(ExifData& data, const platform::LocaleText& locale) {
  std::string text;
  for (const auto& line : PropertyLines(data, locale)) {
    if (!text.empty()) text += '\n';
    text.append(line.label).append(line.value).append(line.tail);
  }
  return text;
}

std::string GetSummaryText(const ExifData& data, const platform::LocaleText& locale) {
  return WithoutOuterLineEnds(Lines(kSummary, data, locale));
}

std::string GetShortSummaryText(const ExifData& data, const platform::LocaleText& locale) {
  return WithoutOuterLineEnds(Lines(kShortSummary, data, locale));
}

}  // namespace ml::metadata
