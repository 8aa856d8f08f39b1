#include "numbered_photos.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "support/jpeg_builder.h"
#include "support/sample_photo.h"

namespace ml::bench {
namespace {

constexpr int kViews = 4, kQuality = 90;
/// Large enough for the colour to survive compression and scaling; its tens are green, its ones red.
constexpr int kPatch = 900, kColourStep = 25;

void Stamp(test::Picture& picture, int number) {
  const char colour[] = {static_cast<char>(number % 10 * kColourStep), static_cast<char>(number / 10 * kColourStep),
                         static_cast<char>(255)};
  for (int y = (kPhotoHeight - kPatch) / 2; y < (kPhotoHeight + kPatch) / 2; ++y) {
    for (int x = (kPhotoWidth - kPatch) / 2; x < (kPhotoWidth + kPatch) / 2; ++x) {
      const auto place = (static_cast<std::size_t>(y) * kPhotoWidth + static_cast<std::size_t>(x)) * 3;
      std::copy_n(colour, 3, picture.rgb.begin() + static_cast<std::ptrdiff_t>(place));
    }
  }
}

}  // namespace

void WriteNumberedPhotos(const std::string& directory, int count, Previews previews) {
  std::filesystem::create_directories(directory);
  std::vector<test::Picture> views;
  for (unsigned i = 0; i < kViews; ++i) views.push_back(test::PaintLandscape(kPhotoWidth, kPhotoHeight, i + 1));
  for (int i = 0; i < count; ++i) {
    auto& view = views[static_cast<std::size_t>(i % kViews)];
    Stamp(view, i);
    test::ExifFields fields{.make = "Tarnwick", .model = "Sample", .dateTime = "2003:10:04 08:00:00"};
    if (previews == Previews::With) {
      fields.thumbnail = test::EncodeJpeg(test::PaintLandscape(160, 120, static_cast<unsigned>(i)));
    }
    WriteNumberedFile(directory, i, test::WithExif(test::EncodeJpeg(view, {.quality = kQuality}), fields));
  }
}

std::optional<int> NumberOfMiddle(int red, int green, int blue) {
  if (blue < 200) return std::nullopt;
  const auto digit = [](int level) { return static_cast<int>(std::lround(level / double{kColourStep})); };
  return digit(red) + 10 * digit(green);
}

void WriteNumberedFile(const std::string& directory, int number, const std::string& content) {
  char name[32];
  std::snprintf(name, sizeof name, "/IMG_%04d.JPG", number + 1);
  std::ofstream out(directory + name, std::ios::binary);
  out << content;
  if (!out.flush()) throw std::runtime_error("cannot write " + directory + name);
}

}  // namespace ml::bench
