#include "imagefiles/profile_name.h"

#include "imagefiles/embedded_profile.h"
#include "imaging/colour/colour_profile.h"

namespace ml::imagefiles {

void FillProfileName(metadata::ExifData& data) {
  if (!data.hasIccProfile || !data.iccProfileName.empty()) return;
  if (const auto profile = ReadEmbeddedProfile(data.path)) {
    data.iccProfileName = imaging::ColourProfile::FromMemory(*profile).Description();
  }
}

}  // namespace ml::imagefiles
