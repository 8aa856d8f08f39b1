#include "imaging/ui/pixel_image.h"

#include <cassert>

namespace ml::imaging::ui {

QImage WrapPixels(const PixelBuffer& pixels) {
  if (pixels.Empty()) return {};
  assert(pixels.bytesPerSample == 1);
  assert(pixels.data.size() >= pixels.RowBytes() * static_cast<std::size_t>(pixels.height));
  const auto format = pixels.order == PixelOrder::Bgr ? QImage::Format_BGR888 : QImage::Format_RGB888;
  return {reinterpret_cast<const uchar*>(pixels.data.data()), pixels.width, pixels.height,
          static_cast<qsizetype>(pixels.RowBytes()), format};
}

QImage MeanOfChannels(const QImage& image) {
  assert(image.depth() == 24);
  QImage grey(image.size(), QImage::Format_Grayscale8);
  for (int y = 0; y < image.height(); ++y) {
    const uchar* from = image.constScanLine(y);
    uchar* to = grey.scanLine(y);
    for (int x = 0; x < image.width(); ++x, from += 3) to[x] = static_cast<uchar>((from[0] + from[1] + from[2]) / 3);
  }
  return grey;
}

}  // namespace ml::imaging::ui
