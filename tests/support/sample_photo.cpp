#include "support/sample_photo.h"

#include <cstdio>
// jpeglib.h needs the line above.
#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "support/jpeg_builder.h"

namespace ml::test {
namespace {

struct Colour {
  float red = 0, green = 0, blue = 0;
};
Colour Mix(Colour a, Colour b, float t) {
  return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t, a.blue + (b.blue - a.blue) * t};
}

std::uint32_t Hash(std::uint32_t x) {
  x ^= x >> 16, x *= 0x7feb352dU, x ^= x >> 15, x *= 0x846ca68bU, x ^= x >> 16;
  return x;
}
/// 0..1, fixed for its arguments.
float Random(unsigned seed, unsigned index) {
  return static_cast<float>(Hash(seed * 7919U + index) & 0xffff) / 65535.0F;
}

struct Ridge {
  float base, height, frequency, phase;
  Colour colour;
};

/// All lengths are shares of the picture's sides.
struct View {
  Colour zenith, horizon, sun;
  float sunX, sunY, sunSize;
  std::array<Ridge, 4> ridges;
};

View MakeView(unsigned seed) {
  const auto any = [&](unsigned index) { return Random(seed, index); };
  View view{.zenith = {30 + 60 * any(1), 70 + 70 * any(2), 140 + 90 * any(3)},
            .horizon = {200 + 55 * any(4), 150 + 80 * any(5), 110 + 120 * any(6)},
            .sun = {255, 240, 200 - 80 * any(7)},
            .sunX = 0.15F + 0.7F * any(8),
            .sunY = 0.12F + 0.35F * any(9),
            .sunSize = 0.04F + 0.05F * any(10),
            .ridges = {}};
  const Colour far{110, 125, 150}, near{20 + 50 * any(11), 45 + 50 * any(12), 15 + 30 * any(13)};
  for (unsigned i = 0; i < view.ridges.size(); ++i) {
    const float depth = static_cast<float>(i) / static_cast<float>(view.ridges.size() - 1);
    view.ridges[i] = {0.5F + 0.38F * depth, 0.04F + 0.1F * any(20 + i), 3 + 7 * any(30 + i), 6.28F * any(40 + i),
                      Mix(far, near, depth)};
  }
  return view;
}

float RidgeTop(const Ridge& ridge, float x) {
  const float angle = x * ridge.frequency + ridge.phase;
  return ridge.base -
         ridge.height * (std::sin(angle) + 0.4F * std::sin(2.7F * angle + 1) + 0.15F * std::sin(9 * angle));
}

Colour SkyAt(const View& view, float x, float y, float aspect) {
  const Colour sky = Mix(view.zenith, view.horizon, std::min(1.0F, y * 1.6F));
  const float dx = (x - view.sunX) * aspect, dy = y - view.sunY;
  const float distance = std::sqrt(dx * dx + dy * dy) / view.sunSize;
  return distance < 1 ? view.sun : Mix(view.sun, sky, std::min(1.0F, 0.35F + 0.2F * distance));
}

char Sample(float value) { return static_cast<char>(static_cast<std::uint8_t>(std::clamp(value, 0.0F, 255.0F))); }

[[noreturn]] void Fail(j_common_ptr info) {
  (*info->err->output_message)(info);
  std::abort();
}

void WriteRows(jpeg_compress_struct& info, const Picture& picture, JpegColours colours) {
  std::vector<JSAMPLE> row(static_cast<std::size_t>(picture.width) * 4);
  const auto* in = reinterpret_cast<const std::uint8_t*>(picture.rgb.data());
  for (int y = 0; y < picture.height; ++y) {
    auto* out = row.data();
    for (int x = 0; x < picture.width; ++x, in += 3) {
      if (colours == JpegColours::Grey) {
        *out++ = in[1];
        continue;
      }
      const int inverted = colours == JpegColours::CmykPlain ? 0xff : 0;
      for (int i = 0; i < 3; ++i) *out++ = static_cast<JSAMPLE>(in[i] ^ inverted);
      if (colours != JpegColours::YCbCr) *out++ = static_cast<JSAMPLE>(0xff ^ inverted);
    }
    JSAMPROW rows[] = {row.data()};
    jpeg_write_scanlines(&info, rows, 1);
  }
}

}  // namespace

Picture PaintLandscape(int width, int height, unsigned seed) {
  const View view = MakeView(seed);
  Picture picture{width, height,
                  std::string(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, 0)};
  const float aspect = static_cast<float>(width) / static_cast<float>(height);
  // Texture has the same grain at every size of more than a screen, and none to speak of in a thumbnail.
  const float grain = std::min(1.0F, static_cast<float>(width) / 1500.0F);
  for (int x = 0; x < width; ++x) {
    const float fx = static_cast<float>(x) / static_cast<float>(width);
    std::array<float, 4> tops{};
    for (std::size_t i = 0; i < tops.size(); ++i) tops[i] = RidgeTop(view.ridges[i], fx);
    for (int y = 0; y < height; ++y) {
      const float fy = static_cast<float>(y) / static_cast<float>(height);
      Colour colour = SkyAt(view, fx, fy, aspect);
      float texture = 8;
      for (std::size_t i = 0; i < tops.size(); ++i) {
        if (fy < tops[i]) continue;
        colour = Mix(view.ridges[i].colour, {0, 0, 0}, std::min(0.6F, (fy - tops[i]) * 1.5F));
        texture = 14 + 10 * static_cast<float>(i);
      }
      const auto noise = Random(seed, static_cast<unsigned>(y) * 65537U + static_cast<unsigned>(x)) - 0.5F;
      const float add = noise * texture * grain;
      auto* out = picture.rgb.data() +
                  (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3;
      out[0] = Sample(colour.red + add), out[1] = Sample(colour.green + add), out[2] = Sample(colour.blue + add);
    }
  }
  return picture;
}

Picture PaintPlain(int width, int height, unsigned colour) {
  Picture picture{width, height, {}};
  const std::string pixel{static_cast<char>(colour >> 16), static_cast<char>(colour >> 8 & 0xff),
                          static_cast<char>(colour & 0xff)};
  for (int i = 0; i < width * height; ++i) picture.rgb += pixel;
  return picture;
}

std::string EncodeJpeg(const Picture& picture, const JpegEncoding& encoding) {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  errors.error_exit = Fail;
  jpeg_create_compress(&info);
  unsigned char* memory = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&info, &memory, &size);
  const bool grey = encoding.colours == JpegColours::Grey, colour = encoding.colours == JpegColours::YCbCr;
  info.image_width = static_cast<JDIMENSION>(picture.width);
  info.image_height = static_cast<JDIMENSION>(picture.height);
  info.input_components = grey ? 1 : colour ? 3 : 4;
  info.in_color_space = grey ? JCS_GRAYSCALE : colour ? JCS_RGB : JCS_CMYK;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, encoding.quality, TRUE);
  if (encoding.colours == JpegColours::CmykAdobe) jpeg_set_colorspace(&info, JCS_YCCK);
  if (encoding.colours == JpegColours::CmykPlain) info.write_Adobe_marker = FALSE;
  if (encoding.fullChroma) info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
  if (encoding.unusualChroma) info.comp_info[1].h_samp_factor = info.comp_info[2].v_samp_factor = 2;
  if (encoding.progressive) jpeg_simple_progression(&info);
  jpeg_start_compress(&info, TRUE);
  WriteRows(info, picture, encoding.colours);
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  std::string bytes(reinterpret_cast<char*>(memory), size);
  std::free(memory);
  return bytes;
}

std::string MakePhoto(const SamplePhoto& photo) {
  ExifFields fields{
      .make = photo.make, .model = photo.model, .dateTime = photo.dateTime, .orientation = photo.orientation};
  if (photo.thumbnail) {
    const int longer = std::max(photo.width, photo.height);
    const int side = std::min(160, longer);
    fields.thumbnail = EncodeJpeg(PaintLandscape(std::max(1, photo.width * side / longer),
                                                 std::max(1, photo.height * side / longer), photo.seed));
  }
  const auto picture = PaintLandscape(photo.width, photo.height, photo.seed);
  return WithExif(EncodeJpeg(picture, {.quality = photo.quality}), fields);
}

}  // namespace ml::test
