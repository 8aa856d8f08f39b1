#include "imagefiles/thumbnail_maker.h"

#include <algorithm>

#include "imagefiles/format_table.h"
#include "imagefiles/image_file.h"
#include "imagefiles/jpeg_image_file.h"
#include "imagefiles/messages.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/scale.h"
#include "metadata/exif_block.h"
#include "platform/companion_set.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

FittedSize FitToBox(int width, int height, int size) { return FitToLimits(width, height, {size, size}); }

/// Reduces to `size`, turns, and lays the rows out for the display.
imaging::PixelBuffer Finish(imaging::PixelBuffer pixels, FittedSize size, imaging::Turn turn) {
  if (size.width < pixels.width || size.height < pixels.height) {
    pixels = imaging::ScaleAverage(pixels, size.width, size.height);
  }
  if (turn != imaging::Turn::None) pixels = imaging::Turned(pixels, turn);
  return imaging::ToDisplayLayout(pixels);
}

/// A small JPEG stream of a camera, fitted. The box is square, so that a turn makes no difference to the fit.
imaging::DecodedJpeg DecodeSmall(const metadata::ByteSource& source, std::uint64_t position, int size) {
  const auto scale = [&](int width, int height) { return imaging::HalvedEighths(width, height, size, size); };
  return imaging::DecodeJpeg(source, position, scale, imaging::PixelOrder::Bgr);
}

imaging::PixelBuffer FinishSmall(imaging::DecodedJpeg decoded, int size, imaging::Turn turn) {
  const auto fitted = FitToBox(decoded.pixels.width, decoded.pixels.height, size);
  return Finish(std::move(decoded.pixels), fitted, turn);
}

/// The first embedded thumbnail that is whole; empty if there is none.
imaging::PixelBuffer EmbeddedThumbnail(const metadata::ByteSource& source, int size, imaging::Turn turn) {
  for (const auto position : metadata::FindExifThumbnails(source)) {
    try {
      auto decoded = DecodeSmall(source, position, size);
      if (!decoded.damaged) return FinishSmall(std::move(decoded), size, turn);
    } catch (const platform::LibraryError&) {
      continue;  // the picture itself will do
    }
  }
  return {};
}

/// The ".thm" beside `path`; empty if there is none. Cameras write one of two spellings, which need no look
/// through the directory.
std::string FindThm(const std::string& path) {
  for (const auto* extension : {".thm", ".THM"}) {
    auto candidate = platform::WithExtension(path, extension);
    if (platform::IsRegularFile(candidate)) return candidate;
  }
  const auto directory = platform::DirectoryOf(path);
  platform::DirIndex index(directory.empty() ? "." : std::string(directory));
  return platform::FindCompanion(path, ".thm", index);
}

Thumbnail ThmThumbnail(const std::string& path, int size) {
  const platform::ReadableFile file(path);
  auto decoded = DecodeSmall(metadata::FileSource(file), 0, size);
  return {FinishSmall(std::move(decoded), size, imaging::Turn::None), ThumbnailSource::Thm};
}

Thumbnail JpegThumbnail(const metadata::ByteSource& source, int size, const ImageFileOptions& options) {
  const auto turn = JpegTurn(source, options);
  if (!options.ignoreEmbeddedThumbnails && size <= kMaxEmbeddedThumbnail) {
    auto pixels = EmbeddedThumbnail(source, size, turn);
    if (!pixels.Empty()) return {std::move(pixels), ThumbnailSource::Exif};
  }
  const auto scale = [&](int width, int height) {
    const auto fitted = FitToBox(width, height, size);
    return imaging::LeastCoveringEighths(width, height, fitted.width, fitted.height);
  };
  auto decoded = imaging::DecodeJpeg(source, 0, scale, imaging::PixelOrder::Bgr);
  const auto fitted = FitToBox(decoded.fullWidth, decoded.fullHeight, size);
  return {Finish(std::move(decoded.pixels), fitted, turn), ThumbnailSource::Full};
}

}  // namespace

const char* ThumbnailSourceName(ThumbnailSource source) {
  switch (source) {
    case ThumbnailSource::Exif:
      return "exif";
    case ThumbnailSource::Thm:
      return "thm";
    case ThumbnailSource::Viewing:
      return "viewing";
    case ThumbnailSource::Embedded:
      return "embedded";
    case ThumbnailSource::Full:
      break;
  }
  return "full";
}

Thumbnail MakeThumbnail(const std::string& path, int size, const ImageFileOptions& options) {
  const auto* format = FindFormat(path);
  if (format == nullptr) throw platform::UserError(messages::NoImage(path));
  const platform::ReadableFile file(path);
  size = std::max(1, size);
  try {
    if (IsJpegName(path)) return JpegThumbnail(metadata::FileSource(file), size, options);
    const auto thm = format->hasThm && size <= kMaxEmbeddedThumbnail ? FindThm(path) : std::string();
    if (!thm.empty()) return ThmThumbnail(thm, size);
  } catch (const platform::LibraryError& error) {
    throw platform::UserError(messages::UnableToRead(path, error.what()));
  }
  throw platform::UserError(messages::NoThumbnail(path));
}

}  // namespace ml::imagefiles
