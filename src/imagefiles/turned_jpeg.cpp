#include "imagefiles/turned_jpeg.h"

#include <utility>

#include "imaging/scale.h"
#include "metadata/exif_block.h"

namespace ml::imagefiles {
namespace {

bool SwapsSides(imaging::Turn turn) { return turn == imaging::Turn::cw90 || turn == imaging::Turn::cw270; }

}  // namespace

imaging::Turn TurnOfDegrees(int degrees) {
  switch (degrees) {
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

imaging::Turn TurnOfOrientation(std::uint32_t orientation) {
  return TurnOfDegrees(metadata::DegreesOfOrientation(orientation).value_or(0));
}

imaging::Turn TurnOfShot(const metadata::ExifData& exif) {
  return exif.userRotation != 0 ? TurnOfDegrees(exif.userRotation)
                                : TurnOfOrientation(static_cast<std::uint32_t>(exif.orientation));
}

imaging::Turn RecordedTurn(const metadata::ByteSource& jpeg) {
  return TurnOfDegrees(metadata::ReadOrientationFromExif(jpeg).value_or(0));
}

imaging::Turn JpegTurn(const metadata::ByteSource& jpeg, const ImageFileOptions& options) {
  return options.useJpegExifOrientation ? RecordedTurn(jpeg) : imaging::Turn::None;
}

imaging::JpegScale ScaleToCover(const imaging::WantedSize& wanted, imaging::Turn turn) {
  return [wanted, swapped = SwapsSides(turn)](int width, int height) {
    auto size = swapped ? wanted(height, width) : wanted(width, height);
    if (swapped) std::swap(size.width, size.height);
    return imaging::LeastCoveringEighths(width, height, size.width, size.height);
  };
}

imaging::DecodedPicture TurnPicture(imaging::DecodedPicture picture, imaging::Turn turn) {
  if (turn == imaging::Turn::None) return picture;
  picture.pixels = imaging::Turned(picture.pixels, turn);
  if (SwapsSides(turn)) std::swap(picture.fullWidth, picture.fullHeight);
  return picture;
}

imaging::DecodedPicture DecodeTurnedJpeg(const metadata::ByteSource& file, const JpegPlace& place,
                                         const imaging::JpegScale& scale) {
  return TurnPicture(imaging::DecodeJpeg(file, place.offset, scale, imaging::PixelOrder::Rgb), place.turn);
}

}  // namespace ml::imagefiles
