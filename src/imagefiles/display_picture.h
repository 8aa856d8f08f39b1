#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "imagefiles/colour_options.h"
#include "imagefiles/develop_library.h"
#include "imagefiles/highlights.h"
#include "imagefiles/histogram.h"
#include "imagefiles/image_file.h"

namespace ml::imagefiles {

/// How the image on show is to look.
struct DisplayOptions {
  DisplayLimits limits;
  BitmapQuality quality;
  ImageFileOptions file;
  ColourOptions colour;
  std::optional<HighlightOptions> highlights;  ///< blown highlights flash
  bool focusPoints = false;
  bool developEos1D = false;  ///< EOS-1D raw files are developed instead of showing their viewing JPEGs
  bool operator==(const DisplayOptions&) const = default;
};

/// One image made ready for the main display.
struct DisplayPicture {
  imaging::PixelBuffer main;   ///< as ImageFile::GetBitmap gives it; empty if there is no picture
  imaging::PixelBuffer blink;  ///< of the same size, its blown highlights black; empty unless they flash
  Histogram histogram;
  std::string failure;  ///< why there is no picture, a sentence

  std::size_t Bytes() const { return main.data.size() + blink.data.size() + sizeof *this; }
};

/// Decodes the image at `path`. Safe on several threads at once, with a library each; it is needed only where raw files
/// are to be developed, and those that it refuses show what they show without it. Never throws for what the file holds.
DisplayPicture MakeDisplayPicture(const std::string& path, const DisplayOptions& options,
                                  DevelopLibrary* library = nullptr);

}  // namespace ml::imagefiles
