#include "imaging/png/png_encoder.h"

#include <gtest/gtest.h>
#include <png.h>

namespace ml::imaging {
namespace {

/// Decoded by the library's own short way in.
std::vector<std::uint8_t> Decode(const std::vector<std::byte>& file, png_uint_32 format) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) return {};
  EXPECT_EQ(image.format, format);
  std::vector<std::uint8_t> samples(PNG_IMAGE_SIZE(image));
  return png_image_finish_read(&image, nullptr, samples.data(), 0, nullptr) == 0 ? std::vector<std::uint8_t>()
                                                                                 : samples;
}

TEST(EncodePng, KeepsEverySampleInEitherOrderAndLeavesThePadOut) {
  PixelBuffer picture{3, 2, 4, PixelOrder::Bgr, 1, {}};
  for (int i = 0; i < 24; ++i) picture.data.push_back(static_cast<std::byte>(10 * i));
  EXPECT_EQ(
      Decode(EncodePng(picture, PngColour::Rgb), PNG_FORMAT_RGB),
      (std::vector<std::uint8_t>{20, 10, 0, 50, 40, 30, 80, 70, 60, 140, 130, 120, 170, 160, 150, 200, 190, 180}));
  picture.order = PixelOrder::Rgb;
  EXPECT_EQ(Decode(EncodePng(picture, PngColour::Rgb), PNG_FORMAT_RGB)[0], 0);
  EXPECT_EQ(Decode(EncodePng(picture, PngColour::Grey), PNG_FORMAT_GRAY),
            (std::vector<std::uint8_t>{0, 30, 60, 120, 150, 180}));
}

}  // namespace
}  // namespace ml::imaging
