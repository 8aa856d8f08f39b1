#include "imagefiles/edits/jpeg_thumbnail.h"

#include <memory>
#include <string>

#include "imagefiles/edits/jpeg_edits.h"
#include "imagefiles/messages.h"
#include "imagefiles/size_fitting.h"
#include "imagefiles/turned_jpeg.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/jpeg/jpeg_encoder.h"
#include "imaging/scale.h"
#include "metadata/edit/exif_block_writer.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

constexpr int kSide = 160;

/// Throws LibraryError.
imaging::PixelBuffer SmallPicture(const metadata::ByteSource& jpeg) {
  const auto fit = [](int width, int height) { return FitToSquare(width, height, kSide); };
  const auto scale = ScaleToCover(fit, imaging::Turn::None);
  const auto picture = imaging::DecodeJpeg(jpeg, 0, scale, imaging::PixelOrder::Rgb);
  if (picture.damaged) throw platform::LibraryError(messages::kPictureDamaged, "");
  const auto size = fit(picture.fullWidth, picture.fullHeight);
  return imaging::ScaleAverage(picture.pixels, size.width, size.height);
}

metadata::ThumbnailMaker MakerOf(imaging::PixelBuffer pixels) {
  return [pixels = std::make_shared<const imaging::PixelBuffer>(std::move(pixels))](int quality) {
    return imaging::EncodeBareJpeg(*pixels, quality);
  };
}

}  // namespace

metadata::ThumbnailMaker ThumbnailOf(const metadata::ByteSource& jpeg) {
  return [&jpeg, make = metadata::ThumbnailMaker()](int quality) mutable -> std::vector<std::byte> {
    try {
      if (!make) make = MakerOf(SmallPicture(jpeg));
      return make(quality);
    } catch (const platform::LibraryError&) {
      return {};  // the old thumbnail is the best there is
    }
  };
}

void RegenerateThumbnail(metadata::EditedFile& jpeg) {
  if (metadata::ReadUsableExifSegment(jpeg)) metadata::WriteJpegThumbnail(jpeg, ThumbnailOf(jpeg));
}

bool RegenerateThumbnail(ImageFile& file, const EditTools& tools) {
  if (!file.MakeWritable()) throw platform::UserError(std::string(messages::kThumbnailReadOnly));
  file.Wrote();
  bool done = false;
  EditJpeg(file.Path(), tools, [&](metadata::EditedFile& jpeg) {
    try {
      done = metadata::WriteJpegThumbnail(jpeg, MakerOf(SmallPicture(jpeg)));
    } catch (const std::runtime_error& error) {  // of the structure or of the library
      throw platform::UserError(messages::NoThumbnail(file.Path(), error.what()));
    }
  });
  return done;
}

}  // namespace ml::imagefiles
