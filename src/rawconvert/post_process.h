#pragma once

#include <stop_token>

#include "imaging/pixel_buffer.h"
#include "platform/progress.h"
#include "rawconvert/raw_conversion_settings.h"

namespace ml::rawconvert {

/// Whether the settings ask for anything to be done to the developed picture.
bool PostProcesses(const RawConversionSettings& settings);

/// Levels, saturation, gamma, size and unsharp mask, as far as the settings ask for them. `pixels` end with
/// `bytesPerSample` bytes. What the imaging library cannot do is left out; if it does not take the picture at all,
/// `pixels` stay as they are. Tells which step it is at. Throws Cancelled.
void PostProcess(imaging::PixelBuffer& pixels, const RawConversionSettings& settings, int bytesPerSample,
                 platform::Progress& progress, const std::stop_token& stop);

}  // namespace ml::rawconvert
