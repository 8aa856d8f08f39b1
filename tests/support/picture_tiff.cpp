#include "support/picture_tiff.h"

#include <algorithm>

namespace ml::test {
namespace {

/// The rows from `first` on as one strip. A channel below 0 means all three of them.
std::string Strip(const Picture& picture, const TiffEncoding& encoding, int first, int rows, int channel) {
  ByteString out(encoding.order);
  const auto begin = static_cast<std::size_t>(first * picture.width);
  const auto end = begin + static_cast<std::size_t>(rows * picture.width);
  for (auto pixel = begin; pixel < end; ++pixel) {
    for (int i = std::max(channel, 0); i <= (channel < 0 ? 2 : channel); ++i) {
      const auto sample = static_cast<unsigned char>(picture.rgb[pixel * 3 + static_cast<std::size_t>(i)]);
      encoding.bits == 16 ? out.Short(sample * 257U) : out.Byte(sample);
    }
  }
  return out.Take();
}

}  // namespace

TiffBuilder PictureDirectory(const Picture& picture, const TiffEncoding& encoding) {
  const int rows = encoding.rowsPerStrip > 0 ? encoding.rowsPerStrip : picture.height;
  std::vector<std::string> strips;
  const auto cut = [&](int channel) {
    for (int y = 0; y < picture.height; y += rows) {
      strips.push_back(Strip(picture, encoding, y, std::min(rows, picture.height - y), channel));
    }
  };
  if (encoding.grey) {
    cut(1);
  } else if (encoding.planar) {
    for (int channel = 0; channel < 3; ++channel) cut(channel);
  } else {
    cut(-1);
  }
  const std::size_t samples = encoding.grey ? 1 : 3;
  TiffBuilder tiff(encoding.order);
  tiff.Long(256, static_cast<std::uint32_t>(picture.width)).Long(257, static_cast<std::uint32_t>(picture.height));
  tiff.Short(258, TiffBuilder::Numbers(samples, static_cast<std::uint32_t>(encoding.bits)));
  tiff.Short(259, 1).Short(262, encoding.grey ? 1 : 2).Pieces(273, 279, strips);
  tiff.Short(277, static_cast<std::uint32_t>(samples)).Short(278, static_cast<std::uint32_t>(rows));
  tiff.Rational(282, 72).Rational(283, 72).Short(284, encoding.planar ? 2 : 1).Short(296, 2);
  return tiff;
}

}  // namespace ml::test
