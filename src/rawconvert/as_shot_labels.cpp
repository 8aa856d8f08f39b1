#include "rawconvert/as_shot_labels.h"

#include "platform/text.h"

namespace ml::rawconvert {
namespace {

constexpr char kPlain[] = "As shot";

}  // namespace

std::string AsShotLabel(const std::string& text) { return text.empty() ? kPlain : kPlain + (" (" + text + ")"); }

std::string AsShotContrast(const metadata::ExifData& exif) { return AsShotLabel(exif.contrast); }
std::string AsShotSaturation(const metadata::ExifData& exif) { return AsShotLabel(exif.saturation); }
std::string AsShotSharpness(const metadata::ExifData& exif) { return AsShotLabel(exif.sharpness); }
std::string AsShotTone(const metadata::ExifData& exif) { return AsShotLabel(exif.tone); }
std::string AsShotPhotoEffect(const metadata::ExifData& exif) { return AsShotLabel(exif.pictureEffect); }

std::string AsShotWhiteBalance(const metadata::ExifData& exif) {
  return platform::ReplaceAll(AsShotLabel(exif.whiteBalance), "Color temp=", "CT:");
}

std::string AsShotColourMatrix(const metadata::ExifData& exif) {
  const auto matrix = exif.rawColorMatrix != 0 ? exif.rawColorMatrix : exif.colorMatrix;
  return "As shot (matrix " + std::to_string(matrix) + ")";
}

std::string AsShotSharpening(const metadata::ExifData& exif) {
  auto label = AsShotLabel(exif.sharpnessLevel);
  if (!exif.sharpnessPattern.empty()) label += " (" + exif.sharpnessPattern + ")";
  return platform::ReplaceAll(label, "Very", "V.");  // so that it fits
}

std::string AsShotColourSpace(const metadata::ExifData& exif) { return AsShotLabel(exif.colorSpace); }

}  // namespace ml::rawconvert
