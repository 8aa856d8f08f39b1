// Writes a portable pixmap as an image file, so that files and times can be compared with those of other programs:
//   ml_bench_write_picture PPM OUT [SOURCE [PROFILE [QUALITY]]]
// The format follows from the name of OUT; the milliseconds that writing took go to standard output.
#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "imagefiles/metadata_blocks_of.h"
#include "imaging/writers/write_image.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace {

using ml::imaging::WrittenFormat;

/// A pixmap in memory; the pixels stand behind its head, in the order of bytes of this machine.
struct Pixmap {
  std::vector<std::byte> bytes;
  ml::imaging::PixelRows pixels;
};

/// "P6", width, height and greatest value with one white space behind each, then the samples, big-endian.
Pixmap ReadPixmap(const std::string& path) {
  constexpr std::size_t kLongestHead = 64;
  Pixmap map{.bytes = ml::platform::ReadFile(path), .pixels = {}};
  const auto size = std::min(kLongestHead, map.bytes.size());
  const std::string text(reinterpret_cast<const char*>(map.bytes.data()), size);
  auto& pixels = map.pixels;
  int greatest = 0, head = 0;
  if (std::sscanf(text.c_str(), "P6 %d %d %d%n", &pixels.width, &pixels.height, &greatest, &head) != 3) {
    throw std::runtime_error("no pixmap: " + path);
  }
  pixels.bytesPerSample = greatest > 255 ? 2 : 1;
  pixels.stride = pixels.RowBytes();
  const auto start = static_cast<std::size_t>(head) + 1;
  if (map.bytes.size() != start + pixels.stride * static_cast<std::size_t>(pixels.height)) {
    throw std::runtime_error("not whole: " + path);
  }
  pixels.data = map.bytes.data() + start;
  const bool turned = greatest > 255 && std::endian::native == std::endian::little;
  for (auto i = start; turned && i < map.bytes.size(); i += 2) std::swap(map.bytes[i], map.bytes[i + 1]);
  return map;
}

WrittenFormat FormatOf(const std::string& path) {
  if (ml::platform::EndsWithNoCase(path, ".jpg")) return WrittenFormat::Jpeg;
  if (ml::platform::EndsWithNoCase(path, ".jp2")) return WrittenFormat::Jpeg2000;
  if (ml::platform::EndsWithNoCase(path, ".png")) return WrittenFormat::Png;
  return WrittenFormat::Tiff;
}

void Run(int count, char** arguments) {
  const auto argument = [&](int i) { return i < count ? std::string(arguments[i]) : std::string(); };
  const auto map = ReadPixmap(argument(1));
  const auto blocks = ml::imagefiles::ReadMetadataBlocks(argument(3), argument(4), {}, {});
  const int quality = count > 5 ? ml::platform::LeadingInteger(argument(5)) : 90;
  const int threads = static_cast<int>(std::thread::hardware_concurrency());
  const auto start = std::chrono::steady_clock::now();
  ml::imaging::WriteImage(FormatOf(argument(2)), map.pixels, blocks, argument(2),
                          {.quality = quality, .resolution = 300, .threads = threads});
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  std::printf("%.1f\n", taken.count());
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) return std::fputs("write_picture PPM OUT [SOURCE [PROFILE [QUALITY]]]\n", stderr), 2;
  try {
    Run(count, arguments);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
