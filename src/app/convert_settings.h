#pragma once

#include "rawconvert/conversion_choice.h"
#include "settings/settings.h"

/// What the conversion dialogs begin with and leave behind in the settings.
namespace ml::app {

/// Without profiles.
rawconvert::ConversionChoice ConversionChoiceOf(const settings::Settings& settings);
/// After a dialog was accepted.
void PutConversionChoice(const rawconvert::ConversionChoice& choice, settings::Settings& settings);

}  // namespace ml::app
