#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "rawconvert/nef/develop_nef.h"
#include "support/nef_builder.h"

/// How close the decoder's interpolation comes to the picture that a mosaic was made of, beside that of dcraw:
///   ml_bench_nef_quality PICTURE.ppm NAME      (8 bits, binary)
/// makes NAME.nef of the picture and prints the signal-to-noise ratio of what is developed from it. Then
///   dcraw -q 1 -o 0 -4 -r 1 1 1 1 -k 0 -S 4095 -t 0 NAME.nef
///   ml_bench_nef_quality PICTURE.ppm NAME.ppm
/// prints that of dcraw's picture, over the same pixels.
namespace ml {
namespace {

constexpr int kTop = 4095, kMargin = 8;

struct Levels {
  int width = 0, height = 0;
  std::vector<std::array<int, 3>> pixels;  ///< 0..kTop or 0..65535
};

Levels ReadPpm(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::string magic;
  Levels levels;
  int top = 0;
  in >> magic >> levels.width >> levels.height >> top;
  in.get();
  if (!in || magic != "P6") throw std::runtime_error("no PPM: " + path);
  for (int i = 0; i < levels.width * levels.height; ++i) {
    auto& pixel = levels.pixels.emplace_back();
    for (auto& level : pixel) level = top > 255 ? in.get() * 256 + in.get() : in.get();
  }
  if (!in) throw std::runtime_error("cut off: " + path);
  return levels;
}

/// As a sensor of 12 bits would see it.
Levels InLight(Levels picture) {
  for (auto& pixel : picture.pixels) {
    for (auto& level : pixel) level = static_cast<int>(kTop * std::pow(level / 255.0, 2.2) + 0.5);
  }
  return picture;
}

/// Over all channels, of levels raised as for the eye. `shift` is how far the second is cut at the left and top.
double Ratio(const Levels& wanted, const std::vector<std::array<double, 3>>& found, int width, int height, int shift) {
  const auto seen = [](double part) { return std::pow(std::min(1.0, part), 1 / 2.2); };
  double error = 0;
  long count = 0;
  for (int y = kMargin; y < height - kMargin; ++y) {
    for (int x = kMargin; x < width - kMargin; ++x) {
      const auto at = static_cast<std::size_t>((y + shift) * wanted.width + x + shift);
      const auto& pixel = found[static_cast<std::size_t>(y * width + x)];
      for (std::size_t c = 0; c < 3; ++c, ++count) {
        const double off = seen(wanted.pixels[at][c] / static_cast<double>(kTop)) - seen(pixel[c]);
        error += off * off;
      }
    }
  }
  return -10 * std::log10(error / static_cast<double>(count));
}

double OwnRatio(const Levels& picture, const std::string& name) {
  const auto* camera = rawconvert::FindNefCamera("NIKON D1");
  std::vector<std::uint16_t> samples;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const auto& pixel = picture.pixels[static_cast<std::size_t>(y * picture.width + x)];
      samples.push_back(static_cast<std::uint16_t>(pixel[static_cast<std::size_t>(ColourAt(*camera, y, x))]));
    }
  }
  const test::NefFile nef{.model = "NIKON D1", .width = picture.width, .height = picture.height};
  std::ofstream(name + ".nef", std::ios::binary) << test::BuildNef(nef, samples).file;
  const auto sensor = rawconvert::ReadNefSensor(name + ".nef");
  const rawconvert::NefSettings settings{.tone = rawconvert::NefTone::Linear};
  const auto multipliers = rawconvert::FindNefMultipliers(sensor, settings);
  const auto pixels = rawconvert::DevelopNef(sensor, settings);
  std::vector<std::array<double, 3>> found;
  for (int y = 0; y < pixels.height; ++y) {
    const auto* row = reinterpret_cast<const std::uint16_t*>(pixels.Row(y));
    for (int x = 0; x < pixels.width; ++x, row += 3) {
      found.push_back({row[0] / 65535.0 / multipliers.red, row[1] / 65535.0, row[2] / 65535.0 / multipliers.blue});
    }
  }
  return Ratio(picture, found, pixels.width, pixels.height, 2);
}

double RatioOf(const Levels& picture, const Levels& other) {
  std::vector<std::array<double, 3>> found;
  for (const auto& pixel : other.pixels) found.push_back({pixel[0] / 65535.0, pixel[1] / 65535.0, pixel[2] / 65535.0});
  return Ratio(picture, found, other.width, other.height, (picture.width - other.width) / 2);
}

}  // namespace
}  // namespace ml

int main(int argc, char** argv) {
  try {
    if (argc != 3) throw std::runtime_error("usage: ml_bench_nef_quality PICTURE.ppm NAME[.ppm]");
    const std::string name = argv[2];
    const auto picture = ml::InLight(ml::ReadPpm(argv[1]));
    const double ratio = name.ends_with(".ppm") ? ml::RatioOf(picture, ml::ReadPpm(name)) : ml::OwnRatio(picture, name);
    std::printf("%.2f dB\n", ratio);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return EXIT_FAILURE;
  }
}
