#pragma once

#include "metadata/exif_data.h"

namespace ml::imagefiles {

/// What the handlers need to know of the settings; a copy is handed to each.
struct ImageFileOptions {
  bool ignoreEmbeddedThumbnails = false;  ///< "IgnoreEmbeddedThumbnails"
  bool useJpegExifOrientation = false;    ///< "UseJpegExifOrientation"
  bool bindJpegToEos1DRaw = true;         ///< "BindJpegToEos1DRaw"
  bool iptcComments = false;              ///< "IPTCcomments"
  bool preserveModificationTime = false;  ///< "PreserveImageModificationTime"
  /// False: read-only files stay that, and pass for ones that can be written. For edits that are not written.
  bool liftProtection = true;
  bool operator==(const ImageFileOptions&) const = default;

  metadata::ExifOptions ForExif() const {
    return {.useJpegExifOrientation = useJpegExifOrientation, .iptcComments = iptcComments};
  }
};

}  // namespace ml::imagefiles
