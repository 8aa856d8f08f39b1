#include "rawconvert/conversion_choice.h"

#include "platform/paths.h"
#include "rawconvert/capabilities.h"
#include "rawconvert/normalise_settings.h"

namespace ml::rawconvert {

void OpenChoice(ConversionChoice& choice, const CameraFamily& family, const metadata::ExifData& exif) {
  const auto dialog = PathOf(family) == DevelopPath::CameraImage ? ConversionDialog::Eos1D : ConversionDialog::Other;
  NormaliseForDialog(choice.settings, choice.values, family, dialog, exif);
  if (CapabilitiesOf(family).photoEffect) choice.settings.method = Method::Normal;
  choice.settings.develop = {};
}

void AcceptChoice(ConversionChoice& choice, const CameraFamily& family) {
  // No camera that is only developed in 8 bits knows another method.
  if (family.is8BitOnly) choice.settings.method = Method::Normal;
  SetDevelopValues(choice.settings, choice.values, family);
}

void TakeProfilesOfSpace(ConversionProfiles& profiles, const std::string& model, std::string_view space,
                         const RawProfileTable& table, const imagefiles::ProfileFinder& finder) {
  const auto found = table.flags.find(model);
  if (found == table.flags.end()) return;
  const int flags = found->second;
  std::string profile;
  if (space.find("sRGB") != std::string_view::npos && (flags & profile_flag::kAutoSrgb) != 0) {
    profile = finder.FindSrgbProfile();
  } else if (space.find("Adobe") != std::string_view::npos && (flags & profile_flag::kAutoAdobeRgb) != 0) {
    profile = finder.FindAdobeRgbProfile();
  } else {
    return;
  }
  if ((flags & profile_flag::kEmbedNormal) != 0) profiles.normal = profile;
  if ((flags & profile_flag::kEmbedLinear) != 0) profiles.linear = profile;
}

std::string ProfileText(const ConversionProfiles& profiles, Method method, OutputFormat format) {
  if (format == OutputFormat::Jp2Bits8 || format == OutputFormat::Jp2Bits16) return "<none>";
  const auto& path = profiles.For(method);
  return path.empty() ? "<Disabled in Preferences>" : std::string(platform::FileName(path));
}

}  // namespace ml::rawconvert
