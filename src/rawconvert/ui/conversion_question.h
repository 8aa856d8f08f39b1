#pragma once

#include <functional>
#include <optional>
#include <string>

#include "metadata/exif_data.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/conversion_choice.h"

class QWidget;

namespace ml::rawconvert::ui {

/// What a conversion dialog is opened for. Whatever it refers to outlives the dialog.
struct ConversionQuestion {
  std::string path;                 ///< of the image, or of the first one
  const metadata::ExifData& exif;   ///< of that file
  CameraFamily family{};            ///< of that file
  bool batch = false;               ///< several images, which are not post-processed
  int count = 1;                    ///< of the images of a batch
  bool selection = false;           ///< "Convert Selected" instead of "Convert All", without a batch
  const RawProfileTable& profiles;  ///< by camera
  imagefiles::ProfileFinder finder = imagefiles::ProfileFinder::OfSystem();
  /// Asks for a directory; nothing if the user cancelled.
  std::function<std::optional<std::string>(QWidget& parent, const std::string& start)> chooseDirectory{};
};

}  // namespace ml::rawconvert::ui
