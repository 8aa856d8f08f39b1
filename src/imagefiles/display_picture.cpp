#include "imagefiles/display_picture.h"

#include "imagefiles/display_colour.h"
#include "imagefiles/focus_points.h"
#include "imagefiles/messages.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

void MarkFocusPoints(DisplayPicture& picture, ImageFile& file, const DisplayOptions& options) {
  const auto points = FocusPointsOf(file.Exif(), options.file.useJpegExifOrientation);
  if (!points) return;
  const auto overlay = LayOutFocusPoints(*points, picture.main.width, picture.main.height);
  PaintFocusPoints(picture.main, overlay);
  PaintFocusPoints(picture.blink, overlay);
}

}  // namespace

DisplayPicture MakeDisplayPicture(const std::string& path, const DisplayOptions& options) {
  DisplayPicture result;
  try {
    const auto file = CreateImageFile(path, options.file);
    if (!file) throw platform::UserError(messages::NoSuchImage(path));
    result.main = file->GetBitmap(options.limits, options.quality);
    result.histogram = file->GetHistogram();
    if (!options.quality.greyscale) ColourManagePicture(result.main, *file, options.colour);
    if (options.highlights) result.blink = BlackOutHighlights(result.main, *options.highlights);
    if (options.focusPoints) MarkFocusPoints(result, *file, options);
  } catch (const platform::UserError& error) {
    result = {};
    result.failure = error.what();
  }
  return result;
}

}  // namespace ml::imagefiles
