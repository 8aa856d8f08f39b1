#pragma once

#include "platform/interaction.h"
#include "platform/locale_text.h"
#include "rawconvert/batch/batch_conversion.h"
#include "rawconvert/batch/output_directory.h"
#include "rawconvert/conversion_profile.h"
#include "settings/settings.h"

/// What raw conversion takes from the settings.
namespace ml::options {

rawconvert::DirectoryChoice DirectoryChoiceOf(const settings::Settings& settings);
rawconvert::RawProfileTable RawProfileTableOf(const settings::Settings& settings);
/// Output options of a run over files like that of `exif`: where no profile is switched on for all cameras, that of its
/// model is taken. A profile that is missing is told through `ask`.
rawconvert::ConversionOptions ConversionOptionsOf(const settings::Settings& settings, const metadata::ExifData& exif,
                                                  const platform::LocaleText& locale, platform::Interaction& ask);

}  // namespace ml::options
