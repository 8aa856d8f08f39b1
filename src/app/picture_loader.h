#pragma once

#include <string>

#include "imagefiles/histogram.h"
#include "imagefiles/image_file.h"
#include "imaging/pixel_buffer.h"

namespace ml::app {

/// What became of a wish to see an image.
struct LoadedPicture {
  imaging::PixelBuffer pixels;  ///< as ImageFile::GetBitmap gives them; empty if there is no picture
  imagefiles::Histogram histogram;
  std::string failure;  ///< why there is none, a sentence
};

/// Decodes `path` for the screen. The worker must stand still.
LoadedPicture LoadPicture(const std::string& path, const imagefiles::DisplayLimits& limits,
                          const imagefiles::ImageFileOptions& options, imagefiles::BitmapQuality quality);

/// The limits for a picture pane of `width` x `height` device pixels with a column of `columnWidth` beside it,
/// which a portrait picture may use too.
imagefiles::DisplayLimits DisplayLimitsFor(int width, int height, int columnWidth);

}  // namespace ml::app
