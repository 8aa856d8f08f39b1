#include "metadata/exif_text_values.h"

#include <array>

#include "metadata/exif_formats.h"
#include "platform/numbers.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr double kSmallestStops = 0.05;        ///< steps of less are taken for none
constexpr double kSmallestFocalLength = 0.01;  ///< millimetres

constexpr std::array<std::string_view, 5> kColorMatrices = {
    "Color matrix 1: sRGB natural-looking hue and chroma", "Color matrix 2: sRGB portrait hue and chroma",
    "Color matrix 3: sRGB high-chroma", "Color matrix 4: Adobe RGB", "Color matrix 5: sRGB low-chroma"};

bool Counts(double stops) { return std::fabs(stops) > kSmallestStops; }
bool HasFocalLength(const ExifData& data) { return data.focalLength > kSmallestFocalLength; }
std::string OneDigit(double value) { return platform::FixedNumber(value, 1); }

}  // namespace

CameraClass CameraClassOf(const ExifData& data) {
  const auto model = platform::AsciiLower(data.model);
  const auto holds = [&](std::string_view word) { return model.find(word) != std::string::npos; };
  if (holds("pro90")) return CameraClass::Pro90;
  if (holds("g1")) return CameraClass::G1;
  return holds("d30") ? CameraClass::D30 : CameraClass::Other;
}

namespace text_value {

std::string FileSize(const TextContext& c) {
  return c.data.fileSize == 0 ? std::string() : FormatFileSize(c.data.fileSize, c.locale);
}

std::string ImageNumber(const TextContext& c) { return ImageNumberText(c.data.imageNumber); }

std::string AebShot(const TextContext& c) {
  const bool shown = c.data.aebShot >= 1 && c.data.aebShot <= 7;
  return shown ? std::to_string(c.data.aebShot) : std::string();
}

std::string AebCompensation(const TextContext& c) {
  return Counts(c.data.aebCompensation) ? FormatStops(c.data.aebCompensation) : std::string();
}

std::string TotalCompensation(const TextContext& c) {
  const double one = c.data.exposureCompensation, total = c.data.totalExposureCompensation;
  const bool shown = c.data.hasTotalExposureCompensation && Counts(one) && Counts(total) && Counts(one - total);
  return shown ? FormatStops(total) : std::string();
}

std::string FlashGuideNumber(const TextContext& c) {
  if (c.data.flash == "Off" || c.data.flashGuideNumber == 0 || CameraClassOf(c.data) == CameraClass::D30) return {};
  return platform::FixedNumber(c.data.flashGuideNumber, 2);
}

std::string FlashCompensation(const TextContext& c) {
  return c.data.flash == "Off" ? std::string() : Stops<&ExifData::flashCompensation>(c);
}

std::string SelfTimer(const TextContext& c) {
  return c.data.selfTimer > 0 ? platform::ShortNumber(c.data.selfTimer) : std::string();
}

std::string Lens(const TextContext& c) {
  const double low = c.data.lensMinFocal, high = c.data.lensMaxFocal;
  if (!HasFocalLength(c.data) || high <= 0) return {};
  return (low == high ? "" : OneDigit(low) + " to ") + OneDigit(high) + " mm";
}

std::string FocalLength(const TextContext& c) {
  return HasFocalLength(c.data) ? OneDigit(c.data.focalLength) : std::string();
}

std::string FocalLengthAndLens(const TextContext& c) {
  if (!HasFocalLength(c.data)) return {};
  const double low = c.data.lensMinFocal, high = c.data.lensMaxFocal;
  const auto focalLength = OneDigit(c.data.focalLength) + "mm";
  const bool oneLength = high <= kSmallestFocalLength || low == high;
  return oneLength ? focalLength : OneDigit(low) + "-" + OneDigit(high) + "mm @ " + focalLength;
}

std::string FocalLength35(const TextContext& c) {
  return c.data.focalLength35 > 0 ? std::to_string(c.data.focalLength35) : std::string();
}

std::string SubjectDistance(const TextContext& c) { return DistanceText(c.data.subjectDistance); }

std::string ShutterAndAperture(const TextContext& c) {
  std::string text = c.data.shutterSpeed.empty() ? "" : c.data.shutterSpeed + " sec";
  if (c.data.aperture.empty()) return text;
  return text.append(text.empty() ? "" : ", ").append("f/").append(c.data.aperture);
}

std::string ImageStabilisation(const TextContext& c) {
  if (CameraClassOf(c.data) != CameraClass::Pro90) return {};
  return c.data.imageStabilisation ? "On" : "Off";
}

std::string MacroFocus(const TextContext& c) {
  const auto camera = CameraClassOf(c.data);
  return camera == CameraClass::Pro90 || camera == CameraClass::D30 ? std::string() : c.data.macroFocus;
}

std::string ShortDriveMode(const TextContext& c) {
  return platform::ReplaceAll(c.data.driveMode, "Continuous frame", "Continuous");
}

std::string ImageSize(const TextContext& c) {
  if (c.data.imageWidth <= 0) return {};
  return std::to_string(c.data.imageWidth) + " x " + std::to_string(c.data.imageHeight);
}

std::string Rotation(const TextContext& c) {
  const auto* format = FindExifFormat(c.data.path);
  if (format == nullptr || !format->isJpeg || c.data.orientation <= 0) return {};
  switch (c.data.orientation) {
    case 1:
      return "none";
    case 3:
      return "180 degrees";
    case 6:
      return "90 degrees CW";
    case 8:
      return "90 degrees CCW";
    default:
      return "orientation=" + std::to_string(c.data.orientation);
  }
}

std::string ColorMatrix(const TextContext& c) {
  const auto number = static_cast<std::size_t>(c.data.colorMatrix);
  return number >= 1 && number <= kColorMatrices.size() ? std::string(kColorMatrices[number - 1]) : std::string();
}

std::string HueAdjustment(const TextContext& c) {
  if (c.data.hueAdjustment == 0) return {};
  return std::string(c.data.hueAdjustment > 0 ? "+" : "").append(std::to_string(c.data.hueAdjustment));
}

std::string OtherDescription(const TextContext& c) {
  const auto description = Trimmed<&ExifData::imageDescription>(c);
  return description == Trimmed<&ExifData::comment>(c) ? std::string() : description;
}

std::string Warning(const TextContext& c) {
  return c.data.exifInvalid ? "** WARNING**\nEXIF data invalid" : std::string();
}

}  // namespace text_value
}  // namespace ml::metadata
