#pragma once

#include "rawconvert/nef/nef_sensor.h"
#include "rawconvert/nef/nef_settings.h"

namespace ml::rawconvert {

/// What red and blue are multiplied with; 1 where a channel is dark.
struct NefMultipliers {
  double red = 1;
  double blue = 1;
};

/// By the settings: those of a light, those that make the custom point grey, or those that make the average of the
/// frame grey.
NefMultipliers FindNefMultipliers(const NefSensor& sensor, const NefSettings& settings);

}  // namespace ml::rawconvert
