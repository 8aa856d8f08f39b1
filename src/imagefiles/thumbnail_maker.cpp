#include "imagefiles/thumbnail_maker.h"

#include <algorithm>
#include <optional>

#include "imagefiles/eos1d_test.h"
#include "imagefiles/messages.h"
#include "imagefiles/picture_reader.h"
#include "imagefiles/size_fitting.h"
#include "imagefiles/turned_jpeg.h"
#include "imaging/scale.h"
#include "metadata/exif_block.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using platform::LibraryError;

/// Their companions are too small, while the raw files hold a usable picture.
constexpr std::string_view kModelWithSmallThm = "Canon EOS D60";

/// The first thumbnail of a JPEG's EXIF blocks that is whole.
std::optional<Picture> ReadExifThumbnail(const PictureRequest& request) {
  const auto turn = JpegTurn(request.file, request.options);
  for (const auto position : metadata::FindExifThumbnails(request.file)) {
    try {
      auto decoded = DecodeTurnedJpeg(request.file, {position, turn}, request.smallJpegScale);
      if (!decoded.damaged) return Picture{std::move(decoded), PictureSource::Exif};
    } catch (const LibraryError&) {
      continue;  // the picture itself will do
    }
  }
  return std::nullopt;
}

bool IgnoresThm(const PictureRequest& request) {
  return request.options.ignoreEmbeddedThumbnails &&
         metadata::ExifData(request.path, request.options.ForExif()).model == kModelWithSmallThm;
}

std::optional<Picture> ReadThmThumbnail(const FormatRow& row, const PictureRequest& request) {
  if (row.format == Format::Crw && IgnoresThm(request)) return std::nullopt;
  auto picture = ReadThmPicture(row, request);
  return picture && picture->decoded.damaged ? std::nullopt : std::move(picture);
}

/// A small picture that saves reading the large one.
std::optional<Picture> ReadReadyThumbnail(const FormatRow& row, const PictureRequest& request) {
  if (row.hasThm) return ReadThmThumbnail(row, request);
  const bool hasExif = row.preview == EmbeddedPreview::ExifThumbnail && !request.options.ignoreEmbeddedThumbnails;
  return hasExif ? ReadExifThumbnail(request) : std::nullopt;
}

/// Reduces to the box and lays the rows out for the display.
imaging::PixelBuffer Finish(imaging::DecodedPicture picture, int side, bool small) {
  auto& pixels = picture.pixels;
  auto size = FitToSquare(picture.fullWidth, picture.fullHeight, side);
  // Cameras' JPEGs were halved for the box; what came out of that is fitted.
  if (small || size.width > pixels.width || size.height > pixels.height) {
    size = FitToSquare(pixels.width, pixels.height, side);
  }
  if (size.width < pixels.width || size.height < pixels.height) {
    pixels = imaging::ScaleAverage(pixels, size.width, size.height);
  }
  return imaging::ToDisplayLayout(pixels);
}

/// Kept: not the test by which a file is opened; thumbnails follow the catalogue.
const FormatRow* ThumbnailFormat(const std::string& path, const platform::CompanionSet* companions) {
  const auto* row = FindFormat(path);
  if (row == nullptr || row->format != Format::Tiff) return row;
  const bool hasViewingJpeg = companions != nullptr && !companions->jpg.empty();
  return hasViewingJpeg || catalogueEos1D(path) ? &RowOf(Format::Eos1DRaw) : row;
}

}  // namespace

Thumbnail MakeThumbnail(const std::string& path, int size, const ImageFileOptions& options,
                        const platform::CompanionSet* companions) {
  const auto* row = ThumbnailFormat(path, companions);
  if (row == nullptr) throw platform::UserError(messages::NoImage(path));
  const platform::ReadableFile file(path);
  const metadata::FileSource source(file);
  const int side = std::max(1, size);
  const PictureRequest request{
      .path = path,
      .file = source,
      .options = options,
      .wanted = [side](int width, int height) { return FitToSquare(width, height, side); },
      .smallJpegScale = [side](int w, int h) { return imaging::HalvedEighths(w, h, side, side); },
      .smallestPreview = std::min(side, kSmallestPicture),
      .companions = companions,
      .threads = 1};  // the other processors work on other thumbnails
  try {
    auto picture = side <= kMaxEmbeddedThumbnail ? ReadReadyThumbnail(*row, request) : std::nullopt;
    if (!picture) picture = ReadPicture(*row, request);
    const auto from = picture->source;
    return {Finish(std::move(picture->decoded), side, from != PictureSource::Full), from};
  } catch (const LibraryError& error) {
    throw platform::UserError(messages::UnableToRead(path, error.what()));
  }
}

}  // namespace ml::imagefiles
