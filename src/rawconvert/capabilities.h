#pragma once

#include <span>

#include "metadata/exif_data.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/raw_conversion_settings.h"
#include "rawconvert/value_tables.h"

namespace ml::rawconvert {

/// The rows of the table of what a camera's files can be told.
enum class CapabilityKind { Eos1D, EosD60, Eos10D, PhotoEffects, EightBit, OtherCanon, Nef };

struct Capabilities {
  CapabilityKind kind = CapabilityKind::OtherCanon;
  // The lists; an empty one means that there is nothing to set
  std::span<const ValueRow> contrast = {};
  std::span<const ValueRow> saturation = {};
  std::span<const ValueRow> sharpness = {};
  std::span<const ValueRow> tone = {};
  std::span<const ValueRow> whiteBalance = {};
  bool contrastShown = true;  ///< contrast and sharpness, which may be shown with nothing to set
  bool exposureCompensation = false;
  bool colourMatrix = false;  ///< with sharpening level and object
  bool falseResolutionFilter = false;
  bool colourSpace = false;
  bool colourTemperature = false;
  bool photoEffect = false;  ///< opening a file sets the method to Normal
  bool linear = true;
  bool combined = true;
};

Capabilities CapabilitiesOf(const CameraFamily& family);
bool CanDevelop(const Capabilities& camera, Method method);

/// Which controls of a dialog can be used.
struct EnabledControls {
  bool whiteBalance = true;
  bool contrast = true;
  bool saturation = true;
  bool sharpness = true;
  bool operator==(const EnabledControls&) const = default;
};

/// `effect` is the dialog's photo effect, -1 as shot; `exif` that of the file. Without photo effects it has no say.
EnabledControls EnabledBy(const CameraFamily& family, Method method, int effect, const metadata::ExifData& exif);
/// The effect in force: the dialog's, or for -1 the file's.
int EffectInForce(int effect, const metadata::ExifData& exif);

}  // namespace ml::rawconvert
