#include "support/indexed_picture.h"

#include <array>

namespace ml::test {
namespace {

constexpr std::array<int, 3> kLevels{6, 7, 6};
constexpr std::array<int, 16> kThresholds{0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};

}  // namespace

std::string IndexedPicture::Rgb() const {
  std::string out;
  for (const char index : pixels) out += palette.substr(static_cast<unsigned char>(index) * 3U, 3);
  return out;
}

IndexedPicture ToIndexed(const Picture& picture) {
  IndexedPicture out{picture.width, picture.height, {}, {}};
  for (int red = 0; red < kLevels[0]; ++red) {
    for (int green = 0; green < kLevels[1]; ++green) {
      for (int blue = 0; blue < kLevels[2]; ++blue) {
        out.palette += static_cast<char>(red * 255 / (kLevels[0] - 1));
        out.palette += static_cast<char>(green * 255 / (kLevels[1] - 1));
        out.palette += static_cast<char>(blue * 255 / (kLevels[2] - 1));
      }
    }
  }
  out.palette.resize(768);
  const auto* in = picture.rgb.data();
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const int threshold = kThresholds[static_cast<std::size_t>(y % 4 * 4 + x % 4)] * 16 + 8;
      int index = 0;
      for (const int levels : kLevels) {
        const int scaled = static_cast<unsigned char>(*in++) * (levels - 1);
        index = index * levels + scaled / 255 + (scaled % 255 > threshold ? 1 : 0);
      }
      out.pixels += static_cast<char>(index);
    }
  }
  return out;
}

}  // namespace ml::test
