#pragma once

#include <cmath>
#include <string>
#include <string_view>

#include "metadata/exif_data.h"
#include "metadata/value_text.h"
#include "platform/locale_text.h"
#include "platform/text.h"

namespace ml::metadata {

/// Cameras whose data mean something else, told by a word anywhere in the model: a NIKON D300 counts as a D30.
enum class CameraClass { G1, Pro90, D30, Other };
CameraClass CameraClassOf(const ExifData& data);

struct TextContext {
  const ExifData& data;
  const platform::LocaleText& locale;
};

/// The values of the lines that tell shooting data; empty where there is nothing to tell.
namespace text_value {

template <auto Member>
std::string Field(const TextContext& c) {
  return c.data.*Member;
}
template <auto Member>
std::string Trimmed(const TextContext& c) {
  return std::string(platform::TrimRight(c.data.*Member));
}
template <auto Member>
std::string Stops(const TextContext& c) {
  return c.data.*Member == 0 ? std::string() : FormatStops(c.data.*Member);
}

std::string FileSize(const TextContext& c);
std::string ImageNumber(const TextContext& c);
std::string AebShot(const TextContext& c);
std::string AebCompensation(const TextContext& c);
/// Only where it differs from the exposure compensation.
std::string TotalCompensation(const TextContext& c);
std::string FlashGuideNumber(const TextContext& c);
std::string FlashCompensation(const TextContext& c);
std::string SelfTimer(const TextContext& c);
/// "28.0 to 80.0 mm", where there is a focal length as well.
std::string Lens(const TextContext& c);
std::string FocalLength(const TextContext& c);
/// "28.0-80.0mm @ 50.0mm"
std::string FocalLengthAndLens(const TextContext& c);
std::string FocalLength35(const TextContext& c);
std::string SubjectDistance(const TextContext& c);
/// "1/60 sec, f/2.8"
std::string ShutterAndAperture(const TextContext& c);
std::string ImageStabilisation(const TextContext& c);
std::string MacroFocus(const TextContext& c);
std::string ShortDriveMode(const TextContext& c);
std::string ImageSize(const TextContext& c);
/// Of JPEG files.
std::string Rotation(const TextContext& c);
std::string ColorMatrix(const TextContext& c);
std::string HueAdjustment(const TextContext& c);
/// The description where it differs from the comment.
std::string OtherDescription(const TextContext& c);
std::string Warning(const TextContext& c);

}  // namespace text_value
}  // namespace ml::metadata
