#include "imagefiles/display_picture.h"

#include <optional>
#include <utility>

#include "imagefiles/display_colour.h"
#include "imagefiles/focus_points.h"
#include "imagefiles/messages.h"
#include "imagefiles/turned_jpeg.h"
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

/// Nothing for any other file, and for one that cannot be developed.
std::optional<imaging::DecodedPicture> DevelopEos1D(ImageFile& file, DevelopLibrary* library) {
  if (library == nullptr || file.Row().format != Format::Eos1DRaw) return std::nullopt;
  try {
    imaging::DecodedPicture picture{.pixels = library->Develop(file.Path())};
    picture.fullWidth = picture.pixels.width;
    picture.fullHeight = picture.pixels.height;
    return TurnPicture(std::move(picture), TurnOfShot(file.Exif()));
  } catch (const platform::UserError&) {
    return std::nullopt;
  }
}

imaging::PixelBuffer MakeBitmap(ImageFile& file, const DisplayOptions& options, DevelopLibrary* library) {
  auto developed = DevelopEos1D(file, options.developEos1D ? library : nullptr);
  return developed ? file.GetBitmapOf(*std::move(developed), options.limits, options.quality)
                   : file.GetBitmap(options.limits, options.quality);
}

}  // namespace

DisplayPicture MakeDisplayPicture(const std::string& path, const DisplayOptions& options, DevelopLibrary* library) {
  DisplayPicture result;
  try {
    const auto file = CreateImageFile(path, options.file);
    if (!file) throw platform::UserError(messages::NoSuchImage(path));
    result.main = MakeBitmap(*file, options, library);
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
