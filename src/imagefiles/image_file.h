#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "imagefiles/format_table.h"
#include "imagefiles/histogram.h"
#include "imagefiles/image_file_options.h"
#include "imaging/pixel_buffer.h"

namespace ml::imagefiles {

/// The box that a picture is fitted into. The alternative pair lets a portrait image use a wider limit; 0 x 0
/// offers none.
struct DisplayLimits {
  int maxWidth = 0, maxHeight = 0, altWidth = 0, altHeight = 0;
};

struct BitmapQuality {
  bool highQuality = false;  ///< average the pixels instead of leaving some out
  bool greyscale = false;    ///< every pixel replaced by the mean of its channels
};

/// The size at which a `sourceWidth` x `sourceHeight` picture shows within `limits`: aspect ratio kept in
/// integer divisions, never enlarged, never under one pixel.
struct FittedSize {
  int width = 0, height = 0;
  friend bool operator==(const FittedSize&, const FittedSize&) = default;
};
FittedSize FitToLimits(int sourceWidth, int sourceHeight, const DisplayLimits& limits);

/// A picture as it is to be shown, turned if it has to be.
struct DecodedPicture {
  imaging::PixelBuffer pixels;  ///< 8-bit red-green-blue without padding
  int fullWidth = 0;            ///< size of the picture in the file
  int fullHeight = 0;
};

/// The least size of pixels that is wanted of a picture of this full size.
using SizeWanted = std::function<FittedSize(int fullWidth, int fullHeight)>;

/// One image file, bound to its path for one operation. Not for use by two threads at once.
class ImageFile {
 public:
  virtual ~ImageFile() = default;
  ImageFile(const ImageFile&) = delete;
  ImageFile& operator=(const ImageFile&) = delete;

  const std::string& Path() const { return path_; }
  const FormatRow& Format() const { return row_; }

  /// The picture fitted into `limits`: 8-bit, blue-green-red, rows padded to a multiple of 4 pixels. Fills the
  /// histogram with the channel values before greying. Throws UserError, naming the file, if there is no picture.
  imaging::PixelBuffer GetBitmap(const DisplayLimits& limits, BitmapQuality quality);
  /// The picture at its full size, red-green-blue without padding. Throws UserError.
  imaging::PixelBuffer GetPixels();
  /// Counted by the last GetBitmap.
  const Histogram& GetHistogram() const { return histogram_; }

 protected:
  ImageFile(const FormatRow& row, std::string path, const ImageFileOptions& options)
      : row_(row), path_(std::move(path)), options_(options) {}
  const ImageFileOptions& Options() const { return options_; }

 private:
  /// Decodes the picture at the size that `wanted` names or above; a decoder that can scale while decoding
  /// may give less than the full size. Throws UserError, naming the file.
  virtual DecodedPicture Decode(const SizeWanted& wanted) = 0;

  const FormatRow& row_;
  std::string path_;
  ImageFileOptions options_;
  Histogram histogram_;
};

/// The handler that the extension of `path` chooses; null if the file does not exist or is no image whose
/// pixels can be read.
std::unique_ptr<ImageFile> CreateImageFile(const std::string& path, const ImageFileOptions& options);

}  // namespace ml::imagefiles
