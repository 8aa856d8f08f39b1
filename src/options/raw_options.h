#pragma once

#include "rawconvert/raw_conversion_settings.h"
#include "settings/settings.h"

/// The settings of raw conversion and back: the engine has them as a record of its own.
namespace ml::options {

/// Without development parameters.
rawconvert::RawConversionSettings RawConversionSettingsOf(const settings::Settings& settings);
/// What a dialog shows of the development at first.
rawconvert::RawDialogValues RawDialogValuesOf(const settings::Settings& settings);

void PutRawConversionSettings(const rawconvert::RawConversionSettings& from, settings::Settings& settings);
void PutRawDialogValues(const rawconvert::RawDialogValues& from, settings::Settings& settings);

}  // namespace ml::options
