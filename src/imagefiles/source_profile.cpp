#include "imagefiles/source_profile.h"

#include <algorithm>

namespace ml::imagefiles {
namespace {

constexpr std::string_view kRecordingModels[] = {"Canon EOS-1DS",          "Canon EOS-1D",
                                                 "Canon EOS 10D",          "Canon EOS Kiss Digital",
                                                 "Canon EOS 300D DIGITAL", "Canon EOS DIGITAL REBEL"};
constexpr int kAdobeRgbMatrix = 4;
constexpr int kSrgbSpace = 1;

ColourSpace SrgbIf(bool srgb) { return srgb ? ColourSpace::Srgb : ColourSpace::AdobeRgb; }

}  // namespace

std::optional<ColourSpace> RecordedColourSpace(std::string_view model, const ColourMarks& marks) {
  if (std::ranges::find(kRecordingModels, model) == std::end(kRecordingModels)) return std::nullopt;
  if (marks.matrix > 0) return SrgbIf(marks.matrix != kAdobeRgbMatrix);
  if (marks.space > 0) return SrgbIf(marks.space == kSrgbSpace);
  return SrgbIf(marks.text == "sRGB");
}

std::optional<ColourSpace> RecordedColourSpaceOf(const metadata::ExifData& shootingData) {
  return RecordedColourSpace(shootingData.model, {.matrix = shootingData.colorMatrix, .text = shootingData.colorSpace});
}

std::string GetSourceProfile(const metadata::ExifData& shootingData, const ProfileFinder& finder) {
  const auto space = RecordedColourSpaceOf(shootingData);
  if (!space) return {};
  return *space == ColourSpace::Srgb ? finder.FindSrgbProfile() : finder.FindAdobeRgbProfile();
}

}  // namespace ml::imagefiles
