#include "app/convert_settings.h"

#include "options/conversion_options_of.h"
#include "options/raw_options.h"

namespace ml::app {

using rawconvert::ConversionChoice;

ConversionChoice ConversionChoiceOf(const settings::Settings& settings) {
  const auto& raw = settings.raw;
  return {.settings = options::RawConversionSettingsOf(settings),
          .values = options::RawDialogValuesOf(settings),
          .format = static_cast<rawconvert::OutputFormat>(raw.convertFormat),
          .quality = raw.jpegQuality,
          .resolution = raw.tiffOutputResolution,
          .directory = options::DirectoryChoiceOf(settings),
          .appendMethodLetter = raw.filenameAppend != 0,
          .profiles = {}};
}

void PutConversionChoice(const ConversionChoice& choice, settings::Settings& settings) {
  options::PutRawConversionSettings(choice.settings, settings);
  options::PutRawDialogValues(choice.values, settings);
  auto& raw = settings.raw;
  raw.convertFormat = static_cast<int>(choice.format);
  raw.jpegQuality = choice.quality;
  raw.tiffOutputResolution = choice.resolution;
  raw.convertToSubDir = choice.directory.besideSource ? 1 : 0;
  raw.convertDirectory = choice.directory.directory;
  raw.filenameAppend = choice.appendMethodLetter ? 1 : 0;
}

}  // namespace ml::app
