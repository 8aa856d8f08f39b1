#include "options/conversion_options_of.h"

#include "options/engine_options.h"

namespace ml::options {

rawconvert::DirectoryChoice DirectoryChoiceOf(const settings::Settings& settings) {
  return {settings.raw.convertToSubDir != 0, settings.raw.convertDirectory};
}

rawconvert::RawProfileTable RawProfileTableOf(const settings::Settings& settings) {
  return {settings.profiles.linear, settings.profiles.normal, settings.profiles.flags};
}

rawconvert::ConversionOptions ConversionOptionsOf(const settings::Settings& settings, const metadata::ExifData& exif,
                                                  const platform::LocaleText& locale, platform::Interaction& ask) {
  const auto& raw = settings.raw;
  const auto table = RawProfileTableOf(settings);
  const auto profile = [&](bool linear) {
    const bool forAll = (linear ? raw.enableLinearProfile : raw.enableNormalProfile) != 0;
    if (forAll) return rawconvert::ExistingProfile(linear ? raw.linearProfile : raw.normalProfile, ask);
    return rawconvert::GetConversionProfile(exif, linear, table, ask);
  };
  return {.format = static_cast<rawconvert::OutputFormat>(raw.convertFormat),
          .quality = raw.jpegQuality,
          .resolution = raw.tiffOutputResolution,
          .normalProfile = profile(false),
          .linearProfile = profile(true),
          .files = ImageFileOptionsOf(settings),
          .locale = locale};
}

}  // namespace ml::options
