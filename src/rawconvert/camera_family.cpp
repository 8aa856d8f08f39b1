#include "rawconvert/camera_family.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/paths.h"

namespace ml::rawconvert {
namespace {

constexpr std::array kPhotoEffectModels = {"Canon PowerShot G3", "Canon PowerShot G5", "Canon PowerShot S45",
                                           "Canon PowerShot S50"};

/// Kept: a model that starts with the text does not count.
bool HoldsInside(std::string_view model, std::string_view text) {
  const auto position = model.find(text);
  return position != std::string_view::npos && position > 0;
}

bool Is10D(std::string_view model, FamilyTest test) {
  const auto kiss = test == FamilyTest::Preview ? "eos kiss digital" : "eos kiss";
  return HoldsInside(model, "eos 10d") || HoldsInside(model, "eos 300d") || HoldsInside(model, kiss) ||
         HoldsInside(model, "eos digital rebel");
}

}  // namespace

CameraFamily FamilyOf(const std::string& path, const metadata::ExifData& exif, FamilyTest test) {
  const auto model = platform::AsciiLower(exif.model);
  const auto equals = [&](std::string_view name) { return platform::EqualsAsciiFolded(exif.model, name); };
  return {.isNef = platform::EndsWithNoCase(path, ".nef"),
          .isEos1D = exif.isEos1DRaw,
          .isEos1Ds = equals("Canon EOS-1Ds"),
          .isD60 = equals("Canon EOS D60"),
          .is10D = Is10D(model, test),
          .hasPhotoEffects = std::ranges::any_of(kPhotoEffectModels, equals),
          .is8BitOnly =
              model.find("powershot g1") != std::string::npos || model.find("powershot pro90") != std::string::npos};
}

DevelopPath PathOf(const CameraFamily& family) {
  if (family.isNef) return DevelopPath::OwnDecoder;
  return family.isEos1D || family.isEos1Ds ? DevelopPath::CameraImage : DevelopPath::Development;
}

}  // namespace ml::rawconvert
