#include "imagefiles/jpeg_image_file.h"

#include "imagefiles/messages.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/scale.h"
#include "metadata/exif_block.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {

imaging::Turn JpegTurn(const metadata::ByteSource& source, const ImageFileOptions& options) {
  if (!options.useJpegExifOrientation) return imaging::Turn::None;
  switch (metadata::ReadOrientationFromExif(source).value_or(0)) {
    case 90:
      return imaging::Turn::cw90;
    case 180:
      return imaging::Turn::half;
    case 270:
      return imaging::Turn::cw270;
    default:
      return imaging::Turn::None;
  }
}

DecodedPicture JpegImageFile::Decode(const SizeWanted& wanted) try {
  const platform::ReadableFile file(Path());
  const metadata::FileSource source(file);
  const auto turn = JpegTurn(source, Options());
  const auto scale = [&](int width, int height) {
    const auto size = SwapsSides(turn) ? wanted(height, width) : wanted(width, height);
    return SwapsSides(turn) ? imaging::LeastCoveringEighths(width, height, size.height, size.width)
                            : imaging::LeastCoveringEighths(width, height, size.width, size.height);
  };
  auto decoded = imaging::DecodeJpeg(source, 0, scale, imaging::PixelOrder::Rgb);
  if (SwapsSides(turn)) std::swap(decoded.fullWidth, decoded.fullHeight);
  if (turn != imaging::Turn::None) decoded.pixels = imaging::Turned(decoded.pixels, turn);
  return {std::move(decoded.pixels), decoded.fullWidth, decoded.fullHeight};
} catch (const platform::LibraryError& error) {
  throw platform::UserError(messages::UnableToRead(Path(), error.what()));
}

}  // namespace ml::imagefiles
