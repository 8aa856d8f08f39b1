#pragma once

#include "rawconvert/raw_conversion_settings.h"
#include "settings/settings.h"

/// Raw conversion's values, cut from the settings and put back into them: what a dialog or a run has changed.
namespace ml::options {

/// With fresh development parameters. What is not stored has its default; the photo effect is the dialog's.
rawconvert::RawConversionSettings RawConversionSettingsOf(const settings::Settings& settings);
void PutRawConversionSettings(const rawconvert::RawConversionSettings& from, settings::Settings& settings);

rawconvert::RawDialogValues RawDialogValuesOf(const settings::Settings& settings);
void PutRawDialogValues(const rawconvert::RawDialogValues& from, settings::Settings& settings);

}  // namespace ml::options
