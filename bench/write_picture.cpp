// Writes a portable pixmap as an image file, so that files and times can be compared with those of other programs:
//   ml_bench_write_picture PPM OUT [SOURCE [PROFILE [QUALITY]]]
// The format follows from the name of OUT; the milliseconds that writing took go to standard output.
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>

#include "imagefiles/metadata_blocks_of.h"
#include "imaging/writers/write_image.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace {

using ml::imaging::WrittenFormat;

/// "P6", width, height and greatest value with one white space behind each, then the samples, big-endian.
ml::imaging::PixelBuffer ReadPixmap(const std::string& path) {
  const auto bytes = ml::platform::ReadFile(path);
  const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  int width = 0, height = 0, greatest = 0, head = 0;
  if (std::sscanf(text.c_str(), "P6 %d %d %d%n", &width, &height, &greatest, &head) != 3) {
    throw std::runtime_error("no pixmap: " + path);
  }
  auto pixels = ml::imaging::MakePixelBuffer(width, height, ml::imaging::PixelOrder::Rgb, greatest > 255 ? 2 : 1);
  const auto start = static_cast<std::size_t>(head) + 1;
  if (bytes.size() != start + pixels.data.size()) throw std::runtime_error("not whole: " + path);
  std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(start), bytes.end(), pixels.data.begin());
  const bool turned = greatest > 255 && std::endian::native == std::endian::little;
  for (std::size_t i = 0; turned && i < pixels.data.size(); i += 2) std::swap(pixels.data[i], pixels.data[i + 1]);
  return pixels;
}

WrittenFormat FormatOf(const std::string& path) {
  if (ml::platform::EndsWithNoCase(path, ".jpg")) return WrittenFormat::Jpeg;
  if (ml::platform::EndsWithNoCase(path, ".jp2")) return WrittenFormat::Jpeg2000;
  if (ml::platform::EndsWithNoCase(path, ".png")) return WrittenFormat::Png;
  return WrittenFormat::Tiff;
}

void Run(int count, char** arguments) {
  const auto argument = [&](int i) { return i < count ? std::string(arguments[i]) : std::string(); };
  const auto pixels = ReadPixmap(argument(1));
  const auto blocks = ml::imagefiles::ReadMetadataBlocks(argument(3), argument(4), {}, {});
  const int quality = count > 5 ? ml::platform::LeadingInteger(argument(5)) : 90;
  const int threads = static_cast<int>(std::thread::hardware_concurrency());
  const auto start = std::chrono::steady_clock::now();
  ml::imaging::WriteImage(FormatOf(argument(2)), pixels, blocks, argument(2),
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
