#pragma once

namespace ml::imagefiles {

/// What the handlers need to know of the settings; a copy is handed to each.
struct ImageFileOptions {
  bool ignoreEmbeddedThumbnails = false;  ///< "IgnoreEmbeddedThumbnails"
  bool useJpegExifOrientation = false;    ///< "UseJpegExifOrientation"
  bool bindJpegToEos1DRaw = true;         ///< "BindJpegToEos1DRaw"
};

}  // namespace ml::imagefiles
