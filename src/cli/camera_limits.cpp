#include "cli/camera_limits.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "rawconvert/camera_family.h"
#include "rawconvert/capabilities.h"

namespace ml::cli {
namespace {

using rawconvert::Capabilities;
using rawconvert::Method;
using settings::RawSettings;

/// As shot is what a camera does anyway that has nothing to set.
bool Has(std::span<const rawconvert::ValueRow> list, int value) {
  return value == rawconvert::kAsShot || std::ranges::find(list, value, &rawconvert::ValueRow::value) != list.end();
}

/// A setting that only some cameras know, or know all values of.
struct CameraSetting {
  std::string_view key;
  int RawSettings::*value;
  bool (*knows)(const Capabilities& camera, int value);
};

constexpr CameraSetting kCameraSettings[] = {
    {"RawConvertContrast", &RawSettings::developContrast,
     [](const auto& c, int value) { return Has(c.contrast, value); }},
    {"RawConvertSaturation", &RawSettings::developSaturation,
     [](const auto& c, int value) { return Has(c.saturation, value); }},
    {"RawConvertSharpness", &RawSettings::developSharpness,
     [](const auto& c, int value) { return Has(c.sharpness, value); }},
    {"RawConvertTone", &RawSettings::developTone, [](const auto& c, int value) { return Has(c.tone, value); }},
    {"RawPhotoEffect", &RawSettings::photoEffect, [](const auto& c, int value) { return c.photoEffect || value < 0; }},
    {"EOS1DsharpeningLevel", &RawSettings::sharpnessLevel, [](const auto& c, int) { return c.colourMatrix; }},
    {"EOS1DsharpeningObject", &RawSettings::sharpnessObject, [](const auto& c, int) { return c.colourMatrix; }},
    {"EOS1DcolourMatrix", &RawSettings::colourMatrix, [](const auto& c, int) { return c.colourMatrix; }},
    {"FalseResolutionFilter", &RawSettings::falseResolutionFilter,
     [](const auto& c, int) { return c.falseResolutionFilter; }},
    {"EOS10DcolourSpace", &RawSettings::colourSpace, [](const auto& c, int) { return c.colourSpace; }},
};

const char* Name(Method method) { return method == Method::Linear ? "linear" : "combined"; }

}  // namespace

CameraLimits LimitsOf(const std::string& path, const metadata::ExifData& exif, Method method,
                      rawconvert::OutputFormat format, const RunState& state) {
  const auto family = rawconvert::FamilyOf(path, exif);
  const auto camera = rawconvert::CapabilitiesOf(family);
  CameraLimits limits{.method = method, .remark = {}};
  const auto remark = [&](const std::string& what) {
    limits.remark += (limits.remark.empty() ? exif.model + " " : "; ") + what;
  };
  const bool can = rawconvert::CanDevelop(camera, method);
  if (!can) remark(std::string("does not support ") + Name(method) + " conversion, the normal method is used");
  // The dialog of the window does the same. Others that cannot be combined keep their name with the letter, as there.
  if (!can && family.is8BitOnly) limits.method = Method::Normal;
  if (family.is8BitOnly && rawconvert::FactsOf(format).bits16) {
    remark("only supports 8-bit conversion, the picture has 8 bits");
  }
  const auto& raw = state.settings.raw;
  for (const auto& row : kCameraSettings) {
    const int value = raw.*row.value;
    const bool asked = value != RawSettings().*row.value && state.Told(row.key);
    if (asked && !row.knows(camera, value)) {
      remark("does not know " + std::string(row.key) + "=" + std::to_string(value));
    }
  }
  return limits;
}

}  // namespace ml::cli
