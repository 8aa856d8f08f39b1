// How near developed raw files come to the pictures that the camera put into them, as mean colour differences (CIE
// Delta E 1976), and how long developing takes.
//
//   ml_bench_raw_look [--chart] [--out DIR] FILE.CRW ..
//
// --chart: the picture shows a colour chart of 6 x 4 patches over the middle of the frame, as in the sample of the
// PowerShot G2; each patch is told. --out: writes both pictures beside each other, the camera's to the left.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/png/png_encoder.h"
#include "imaging/scale.h"
#include "metadata/byte_source.h"
#include "metadata/crw_file.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "rawconvert/raw_developer.h"

namespace {

using ml::imaging::PixelBuffer;
using Triple = std::array<double, 3>;

/// Of the patches in the sample's preview of 640 x 480.
constexpr std::array kColumns = {86, 178, 272, 367, 461, 553};
constexpr std::array kRows = {84, 177, 271, 363};
constexpr int kHalfPatch = 24, kRuns = 5;

double Light(double sample) { return sample <= 0.04045 ? sample / 12.92 : std::pow((sample + 0.055) / 1.055, 2.4); }

Triple Lab(const Triple& rgb) {
  const Triple light = {Light(rgb[0]), Light(rgb[1]), Light(rgb[2])};
  const auto root = [](double v) { return v > 0.008856 ? std::cbrt(v) : 7.787 * v + 16.0 / 116; };
  const double x = root((0.4124564 * light[0] + 0.3575761 * light[1] + 0.1804375 * light[2]) / 0.95047);
  const double y = root(0.2126729 * light[0] + 0.7151522 * light[1] + 0.0721750 * light[2]);
  const double z = root((0.0193339 * light[0] + 0.1191920 * light[1] + 0.9503041 * light[2]) / 1.08883);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

/// The mean of a rectangle, 0..1.
Triple Mean(const PixelBuffer& picture, int left, int top, int width, int height) {
  Triple sum{};
  for (int y = top; y < top + height; ++y) {
    const auto* at = picture.Row(y) + static_cast<std::ptrdiff_t>(left) * 3;
    for (int i = 0; i < width * 3; ++i) sum[static_cast<std::size_t>(i % 3)] += std::to_integer<int>(at[i]);
  }
  for (auto& value : sum) value /= 255.0 * width * height;
  return sum;
}

double Difference(const PixelBuffer& a, const PixelBuffer& b, int left, int top, int width, int height) {
  const auto one = Lab(Mean(a, left, top, width, height)), other = Lab(Mean(b, left, top, width, height));
  return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

PixelBuffer Preview(const std::string& path) {
  const ml::platform::ReadableFile file(path);
  const ml::metadata::FileSource source(file);
  const auto range = ml::metadata::FindCrwPreview(source);
  if (!range) return {};
  return ml::imaging::DecodeJpeg(
             source, range->position, [](int, int) { return 8; }, ml::imaging::PixelOrder::Rgb)
      .pixels;
}

void WriteBoth(const PixelBuffer& left, const PixelBuffer& right, const std::string& path) {
  auto both = ml::imaging::MakePixelBuffer(left.width + right.width, left.height);
  for (int y = 0; y < left.height; ++y) {
    std::memcpy(both.Row(y), left.Row(y), left.RowBytes());
    std::memcpy(both.Row(y) + left.RowBytes(), right.Row(y), right.RowBytes());
  }
  const auto png = ml::imaging::EncodePng(both, ml::imaging::PngColour::Rgb);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
}

void TellChart(const PixelBuffer& ours, const PixelBuffer& camera) {
  double sum = 0;
  for (const int y : kRows) {
    for (const int x : kColumns) {
      const double difference =
          Difference(ours, camera, x - kHalfPatch, y - kHalfPatch, 2 * kHalfPatch, 2 * kHalfPatch);
      std::printf(" %5.2f", difference);
      sum += difference;
    }
    std::printf("\n");
  }
  std::printf("  mean of the patches %.2f\n", sum / (kRows.size() * kColumns.size()));
}

/// Over squares of 4 x 4 pixels, small enough for things and large enough for noise.
double MeanDifference(const PixelBuffer& ours, const PixelBuffer& camera) {
  double sum = 0;
  int count = 0;
  for (int y = 0; y + 4 <= camera.height; y += 4) {
    for (int x = 0; x + 4 <= camera.width; x += 4, ++count) sum += Difference(ours, camera, x, y, 4, 4);
  }
  return sum / count;
}

void Compare(const std::string& path, bool chart, const std::string& out) {
  const auto developer = ml::rawconvert::MakeRawDeveloper();
  std::vector<double> times;
  PixelBuffer developed;
  for (int run = 0; run < kRuns; ++run) {
    const auto start = std::chrono::steady_clock::now();
    developed = developer->Develop(path);
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  std::ranges::sort(times);
  std::printf("%s: %d x %d, %.0f ms (median of %d)\n", path.c_str(), developed.width, developed.height,
              times[kRuns / 2], kRuns);
  const auto camera = Preview(path);
  if (camera.Empty()) return;
  const auto ours = ml::imaging::ScaleAverage(developed, camera.width, camera.height);
  std::printf("  mean colour difference %.2f\n", MeanDifference(ours, camera));
  if (chart) TellChart(ours, camera);
  if (!out.empty()) {
    const auto name = std::string(ml::platform::FileName(path)) + ".png";
    WriteBoth(camera, ours, ml::platform::JoinPath(out, name));
  }
}

}  // namespace

int main(int count, char** arguments) {
  bool chart = false;
  std::string out;
  std::vector<std::string> paths;
  for (int i = 1; i < count; ++i) {
    const std::string argument = arguments[i];
    if (argument == "--chart") {
      chart = true;
    } else if (argument == "--out" && i + 1 < count) {
      out = arguments[++i];
    } else {
      paths.push_back(argument);
    }
  }
  try {
    for (const auto& path : paths) Compare(path, chart, out);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
