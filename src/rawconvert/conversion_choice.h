#pragma once

#include <string>
#include <string_view>

#include "imagefiles/profile_finder.h"
#include "metadata/exif_data.h"
#include "rawconvert/batch/output_directory.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/conversion_profile.h"
#include "rawconvert/output_format.h"
#include "rawconvert/raw_conversion_settings.h"

namespace ml::rawconvert {

/// Profiles that go into what a run makes; empty for none.
struct ConversionProfiles {
  std::string normal, linear;
  const std::string& For(Method method) const { return method == Method::Linear ? linear : normal; }
  bool operator==(const ConversionProfiles&) const = default;
};

/// All that a conversion dialog shows and changes.
struct ConversionChoice {
  RawConversionSettings settings;
  RawDialogValues values;
  OutputFormat format = OutputFormat::Jpeg;
  int quality = 95;      ///< 0..100
  int resolution = 180;  ///< dots an inch, 25..999
  DirectoryChoice directory;
  bool appendMethodLetter = true;
  ConversionProfiles profiles;
};

/// What a dialog opens with for this file: the values that its camera knows, and no development parameters yet.
void OpenChoice(ConversionChoice& choice, const CameraFamily& family, const metadata::ExifData& exif);
/// What is to be developed after a dialog was accepted.
void AcceptChoice(ConversionChoice& choice, const CameraFamily& family);

/// Where a dialog is set to another colour space, the label of which is `space`: the profile of that space takes the
/// place of those that the table makes for the model by itself. One that is not found leaves none.
void TakeProfilesOfSpace(ConversionProfiles& profiles, const std::string& model, std::string_view space,
                         const RawProfileTable& table, const imagefiles::ProfileFinder& finder);
/// What a dialog tells of the profile in force: its name, or why there is none.
std::string ProfileText(const ConversionProfiles& profiles, Method method, OutputFormat format);

}  // namespace ml::rawconvert
