#include "app/picture_loader.h"

#include <algorithm>

#include "app/messages.h"
#include "platform/errors.h"

namespace ml::app {

LoadedPicture LoadPicture(const std::string& path, const imagefiles::DisplayLimits& limits,
                          const imagefiles::ImageFileOptions& options, imagefiles::BitmapQuality quality) {
  LoadedPicture result;
  try {
    const auto file = imagefiles::CreateImageFile(path, options);
    if (!file) throw platform::UserError(NoSuchImage(path));
    result.pixels = file->GetBitmap(limits, quality);
    result.histogram = file->GetHistogram();
  } catch (const platform::UserError& error) {
    result.failure = error.what();
  }
  return result;
}

imagefiles::DisplayLimits DisplayLimitsFor(int width, int height, int columnWidth) {
  return {.maxWidth = std::max(width - 6, 1),
          .maxHeight = std::max(height - 5, 1),
          .altWidth = std::max(width + columnWidth - 6, 1),
          .altHeight = std::max(height - 2, 1)};
}

}  // namespace ml::app
