#pragma once

#include <string>

#include "imagefiles/image_file_options.h"
#include "platform/locale_text.h"
#include "rawconvert/output_format.h"

namespace ml::rawconvert {

/// How the results of a run are written.
struct ConversionOptions {
  OutputFormat format = OutputFormat::Jpeg;
  int quality = 95;      ///< 0..100, of JPEG and JPEG 2000
  int resolution = 180;  ///< dots an inch, where the settings do not resize to inches or centimetres
  std::string normalProfile, linearProfile;  ///< files of colour profiles; empty for none
  imagefiles::ImageFileOptions files{};      ///< how the source is read
  platform::LocaleText locale{};             ///< of the texts about the shot
};

}  // namespace ml::rawconvert
