#include "imagefiles/image_file.h"

#include <sys/stat.h>

#include <algorithm>

#include "imagefiles/jpeg_image_file.h"
#include "imaging/scale.h"

namespace ml::imagefiles {
namespace {

/// side * numerator / denominator without overflow; a picture has at least one pixel.
int Proportional(int side, int numerator, int denominator) {
  return std::max(1, static_cast<int>(static_cast<long long>(side) * numerator / denominator));
}

/// The display picture of `source` at the size of the step tables: one pass that counts, greys and swaps.
imaging::PixelBuffer Present(const imaging::PixelBuffer& source, FittedSize size, bool greyscale,
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

}  // namespace

FittedSize FitToLimits(int sourceWidth, int sourceHeight, const DisplayLimits& limits) {
  FittedSize size{sourceWidth, sourceHeight};
  if (size.width > limits.maxWidth) {
    size = {std::max(1, limits.maxWidth), Proportional(sourceHeight, limits.maxWidth, sourceWidth)};
  }
  if (size.height > limits.maxHeight) {
    size = {Proportional(sourceWidth, limits.maxHeight, sourceHeight), std::max(1, limits.maxHeight)};
    if (size.width < limits.altWidth) {
      size = {limits.altWidth, Proportional(sourceHeight, limits.altWidth, sourceWidth)};
      if (size.height > limits.altHeight) {
        size = {Proportional(sourceWidth, limits.altHeight, sourceHeight), std::max(1, limits.altHeight)};
      }
    }
  }
  if (size.width > sourceWidth || size.height > sourceHeight) return {sourceWidth, sourceHeight};
  return size;
}

imaging::PixelBuffer ImageFile::GetBitmap(const DisplayLimits& limits, BitmapQuality quality) {
  const auto fit = [&](int width, int height) { return FitToLimits(width, height, limits); };
  auto picture = Decode(fit);
  const auto size = fit(picture.fullWidth, picture.fullHeight);
  const bool smaller = size.width < picture.pixels.width || size.height < picture.pixels.height;
  if (quality.highQuality && smaller) picture.pixels = imaging::ScaleAverage(picture.pixels, size.width, size.height);
  histogram_ = {};
  return Present(picture.pixels, size, quality.greyscale, histogram_);
}

imaging::PixelBuffer ImageFile::GetPixels() {
  return Decode([](int width, int height) { return FittedSize{width, height}; }).pixels;
}

std::unique_ptr<ImageFile> CreateImageFile(const std::string& path, const ImageFileOptions& options) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return nullptr;
  const auto* row = FindFormat(path);
  if (row == nullptr || !IsJpegName(path)) return nullptr;
  return std::make_unique<JpegImageFile>(*row, path, options);
}

}  // namespace ml::imagefiles
