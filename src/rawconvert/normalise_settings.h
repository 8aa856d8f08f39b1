#pragma once

#include <string>

#include "metadata/exif_data.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/output_format.h"
#include "rawconvert/raw_conversion_settings.h"

namespace ml::rawconvert {

/// Which dialog opens: the one of the EOS-1D family also takes over the file's colour temperature.
enum class ConversionDialog { Eos1D, Other };

/// Brings what a dialog is about to show into what its camera family knows.
void NormaliseForDialog(RawConversionSettings& settings, RawDialogValues& values, const CameraFamily& family,
                        ConversionDialog dialog, const metadata::ExifData& exif);
/// Fills `settings.develop` with what a dialog was told.
void SetDevelopValues(RawConversionSettings& settings, const RawDialogValues& values, const CameraFamily& family);
/// A sharpness as it is sent to the development of this family: "No sharpening" is Low where it does not exist.
int SharpnessFor(const CameraFamily& family, int sharpness);
/// Smart Noise Reduction: 0, 50, 75 or 95.
int SnapNoiseBlending(int blending);
/// Kelvin: to whole hundreds within 2800..10000.
int NormaliseColourTemperature(int kelvin);
/// That of the shot, "as shot" white balance of a colour temperature; 0 if the file tells none.
int ColourTemperatureOf(const metadata::ExifData& exif);

/// Whether accepting a dialog must ask first, and the question.
bool NeedsEightBitWarning(const CameraFamily& family, OutputFormat format, Method method);
std::string EightBitWarning(const std::string& model);

}  // namespace ml::rawconvert
