#include "imagefiles/image_file.h"

#include <sys/stat.h>

#include <utility>

#include "imagefiles/messages.h"
#include "imagefiles/picture_reader.h"
#include "imaging/scale.h"
#include "metadata/exif_comment.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using imaging::PictureSize;

bool Exceeds(PictureSize size, const imaging::PixelBuffer& pixels) {
  return size.width > pixels.width || size.height > pixels.height;
}

/// The display picture of `source` at the size of the step tables: one pass that counts, greys and swaps.
imaging::PixelBuffer Present(const imaging::PixelBuffer& source, PictureSize size, bool greyscale,
                             Histogram& histogram) {
  imaging::PixelBuffer result{size.width, size.height, imaging::PaddedWidth(size.width), imaging::PixelOrder::Bgr,
                              1,          {}};
  result.data.resize(result.RowBytes() * static_cast<std::size_t>(size.height));
  const auto columns = imaging::NearestSteps(source.width, size.width);
  const auto rows = imaging::NearestSteps(source.height, size.height);
  for (int y = 0; y < size.height; ++y) {
    const auto* in = reinterpret_cast<const std::uint8_t*>(source.Row(rows[static_cast<std::size_t>(y)]));
    auto* out = reinterpret_cast<std::uint8_t*>(result.Row(y));
    for (const int column : columns) {
      const auto* pixel = in + static_cast<std::ptrdiff_t>(column) * 3;
      histogram.Add(pixel[0], pixel[1], pixel[2]);
      const auto mean = static_cast<std::uint8_t>((pixel[0] + pixel[1] + pixel[2]) / 3);
      *out++ = greyscale ? mean : pixel[2];
      *out++ = greyscale ? mean : pixel[1];
      *out++ = greyscale ? mean : pixel[0];
    }
  }
  return result;
}

platform::ModificationTimePolicy TimePolicy(const ImageFileOptions& options) {
  return options.preserveModificationTime ? platform::ModificationTimePolicy::Restore
                                          : platform::ModificationTimePolicy::LetStand;
}

}  // namespace

ImageFile::ImageFile(const FormatRow& row, std::string path, const ImageFileOptions& options)
    : row_(row), path_(std::move(path)), options_(options), status_(path_, TimePolicy(options)) {}

imaging::DecodedPicture ImageFile::Decode(const imaging::WantedSize& wanted) try {
  const platform::ReadableFile file(path_);
  const metadata::FileSource source(file);
  auto picture = ReadPicture(row_, {.path = path_, .file = source, .options = options_, .wanted = wanted});
  source_ = picture.source;
  return std::move(picture.decoded);
} catch (const platform::LibraryError& error) {
  throw platform::UserError(messages::UnableToRead(path_, error.what()));
}

imaging::PixelBuffer ImageFile::GetBitmap(const DisplayLimits& limits, BitmapQuality quality) {
  return GetBitmapOf(Decode([&](int width, int height) { return FitToLimits(width, height, limits); }), limits,
                     quality);
}

imaging::PixelBuffer ImageFile::GetBitmapOf(imaging::DecodedPicture picture, const DisplayLimits& limits,
                                            BitmapQuality quality) {
  const auto fit = [&](int width, int height) { return FitToLimits(width, height, limits); };
  auto size = fit(picture.fullWidth, picture.fullHeight);
  if (Exceeds(size, picture.pixels)) size = fit(picture.pixels.width, picture.pixels.height);
  const bool smaller = size.width < picture.pixels.width || size.height < picture.pixels.height;
  if (quality.highQuality && smaller) picture.pixels = imaging::ScaleAverage(picture.pixels, size.width, size.height);
  histogram_ = {};
  return Present(picture.pixels, size, quality.greyscale, histogram_);
}

imaging::PixelBuffer ImageFile::GetPixels() {
  return Decode([](int width, int height) { return PictureSize{width, height}; }).pixels;
}

const metadata::ExifData& ImageFile::Exif() {
  if (!exif_) exif_.emplace(path_, options_.ForExif());
  return *exif_;
}

std::string ImageFile::GetComment() {
  return row_.commentHome == CommentHome::None ? "" : metadata::GetComment(Exif(), options_.ForExif());
}

std::string ImageFile::GetExifComment() {
  return row_.commentHome == CommentHome::None ? "" : metadata::GetExifComment(Exif());
}

std::unique_ptr<ImageFile> CreateImageFile(const std::string& path, const ImageFileOptions& options) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return nullptr;
  const auto* row = FindFormat(path);
  if (row == nullptr) return nullptr;
  const bool raw = row->format == Format::Tiff && metadata::ExifData(path, options.ForExif()).isEos1DRaw;
  return std::make_unique<ImageFile>(raw ? RowOf(Format::Eos1DRaw) : *row, path, options);
}

}  // namespace ml::imagefiles
