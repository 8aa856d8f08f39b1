#include "imaging/operators/picture_operators.h"

#include <cstring>
#include <string>

#include "platform/numbers.h"

namespace ml::imaging {

bool ApplySaturation(MagickImage& image, double percent) {
  return image.Modulate("100.0," + platform::FixedNumber(percent, 1) + ",100.0");
}

bool ApplyGamma(MagickImage& image, double gamma) {
  const auto text = platform::FixedNumber(gamma, 2);
  return image.Gamma(text + "," + text + "," + text + "," + text);
}

bool ApplyUnsharpMask(MagickImage& image, PixelBuffer& buffer, const UnsharpMask& mask, LastRow lastRow) {
  if (!image.Sharpen(mask)) return false;
  const auto sharpened = image.ToPixels(buffer.bytesPerSample);
  const std::size_t pixel = 3 * static_cast<std::size_t>(buffer.bytesPerSample);
  const int end = lastRow == LastRow::Sharpened ? buffer.height : buffer.height - 1;
  for (int y = 1; buffer.width > 2 && y < end; ++y)
    std::memcpy(buffer.Row(y) + pixel, sharpened.Row(y) + pixel, static_cast<std::size_t>(buffer.width - 2) * pixel);
  return true;
}

}  // namespace ml::imaging
