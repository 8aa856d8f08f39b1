#pragma once

#include <memory>
#include <optional>
#include <string>

#include "imagefiles/format_table.h"
#include "imagefiles/histogram.h"
#include "imagefiles/image_file_options.h"
#include "imagefiles/picture.h"
#include "imagefiles/size_fitting.h"
#include "imaging/pixel_buffer.h"
#include "metadata/exif_data.h"
#include "platform/file_status.h"

namespace ml::imagefiles {

struct BitmapQuality {
  bool highQuality = false;  ///< average the pixels instead of leaving some out
  bool greyscale = false;    ///< every pixel replaced by the mean of its channels
  bool operator==(const BitmapQuality&) const = default;
};

/// One image file of any format, bound to its path for one operation. What the formats differ in stands in their
/// rows and in the table of readers. Remembers times and permissions of the file, and the destructor puts them back
/// where it wrote to the file or lifted its protection. Not for use by two threads at once.
class ImageFile {
 public:
  ImageFile(const FormatRow& row, std::string path, const ImageFileOptions& options);
  ImageFile(const ImageFile&) = delete;
  ImageFile& operator=(const ImageFile&) = delete;

  const std::string& Path() const { return path_; }
  const FormatRow& Row() const { return row_; }
  /// Raw with a preview inside. Kept: not so for the raw formats that count as plain images.
  bool IsRaw() const { return row_.isRaw; }

  /// The picture fitted into `limits`: 8-bit, blue-green-red, rows padded to a multiple of 4 pixels. Fills the
  /// histogram with the channel values before greying. Throws UserError, naming the file, if there is no picture.
  imaging::PixelBuffer GetBitmap(const DisplayLimits& limits, BitmapQuality quality);
  /// The same of a picture of this file that was made elsewhere, as GetPixels gives it.
  imaging::PixelBuffer GetBitmapOf(imaging::DecodedPicture picture, const DisplayLimits& limits, BitmapQuality quality);
  /// The picture at its full size, red-green-blue without padding; of a raw file its preview's. Throws UserError.
  imaging::PixelBuffer GetPixels();
  /// Counted by the last GetBitmap.
  const Histogram& GetHistogram() const { return histogram_; }
  /// Where the last picture came from.
  PictureSource Source() const { return source_; }

  /// The shooting data, read when they are first asked for: whoever wants only pixels does not pay for them.
  const metadata::ExifData& Exif();
  /// The user's comment; empty where the format has none. Never throws.
  std::string GetComment();
  /// Without regard to an IPTC caption.
  std::string GetExifComment();

  /// To be called by every writer before it begins: lifts the file's protection until this handler goes. False if
  /// the file is missing or cannot be made writable.
  [[nodiscard]] bool MakeWritable() { return !options_.liftProtection || status_.MakeWritable(); }
  /// To be told of every change to the file.
  void Wrote() noexcept { status_.Wrote(); }

 private:
  /// Throws UserError, naming the file.
  imaging::DecodedPicture Decode(const imaging::WantedSize& wanted);

  const FormatRow& row_;
  std::string path_;
  ImageFileOptions options_;
  platform::FileStatusGuard status_;  // before anything touches the file
  std::optional<metadata::ExifData> exif_;
  Histogram histogram_;
  PictureSource source_ = PictureSource::Full;
};

/// The handler that the extension of `path` chooses, for a TIFF that is an EOS-1D raw file that one; null if the
/// file does not exist or its name is not that of an image.
std::unique_ptr<ImageFile> CreateImageFile(const std::string& path, const ImageFileOptions& options);

}  // namespace ml::imagefiles
