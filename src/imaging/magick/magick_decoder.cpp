#include "imaging/magick/magick_decoder.h"

#include "imaging/read_whole.h"

namespace ml::imaging {

DecodedPicture DecodeMagick(const metadata::ByteSource& source, MagickFormat format) {
  auto file = ReadWhole(source);
  const auto image = MagickImage::Read(file, format);
  file = {};
  return {image.ToRgb(), image.Width(), image.Height(), image.Damaged()};
}

}  // namespace ml::imaging
