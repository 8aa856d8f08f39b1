#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <vector>

#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

std::vector<std::string> ImagesIn(const std::string& folder) {
  std::vector<std::string> paths;
  const auto samples = test::SamplesDir();
  if (!samples) return paths;
  for (const auto& entry : std::filesystem::directory_iterator(*samples + "/" + folder)) {
    if (FindFormat(entry.path().string()) != nullptr) paths.push_back(entry.path().string());
  }
  std::ranges::sort(paths);
  return paths;
}

/// Whether there is a picture; a refusal must be a sentence with the file's name.
bool Shows(const std::string& path) {
  const auto isRefused = [&](const std::function<void()>& act) {
    const auto said = test::Refusal(act);
    EXPECT_TRUE(said.empty() || said.find(path) != std::string::npos) << said;
    return !said.empty();
  };
  const ImageFileOptions options{.useJpegExifOrientation = true};
  for (const int size : {80, 160, 240}) {
    isRefused([&] {
      const auto made = MakeThumbnail(path, size, options);
      EXPECT_LE(std::max(made.pixels.width, made.pixels.height), size);
    });
  }
  return !isRefused([&] {
    const auto file = CreateImageFile(path, options);
    const auto bitmap = file->GetBitmap({300, 200}, {.highQuality = true});
    EXPECT_EQ(file->GetHistogram().pixelCount, static_cast<std::uint32_t>(bitmap.width * bitmap.height));
  });
}

/// Heads of files, raw files whose picture was taken out, and a file of another format than its name says.
const std::set<std::string> kWithoutPicture = {
    "canon-powershot-s70-head.jpg", "pentax-optio-750z-head.jpg",       "riff-header-only.avi",
    "canon-eos-300d-stripped.crw",  "canon-powershot-s40-stripped.crw", "minolta-dimage-a2-stripped.mrw",
    "jpeg-named-nef.nef",           "nikon-d70-stripped.nef",           "canon-eos-350d-head.tif"};

TEST(SampleFiles, OfCamerasShow) {
  for (const auto* folder :
       {"avi", "crw", "gif-bmp", "jp2", "jpeg", "mrw-orf-raf-pef", "nef", "png", "psd", "tiff", "tiff-raw"}) {
    for (const auto& path : ImagesIn(folder)) {
      EXPECT_EQ(Shows(path), !kWithoutPicture.contains(std::filesystem::path(path).filename())) << path;
    }
  }
}

TEST(SampleFiles, ThatAreDamagedEndCleanly) {
  for (const auto& path : ImagesIn("damaged")) Shows(path);
}

}  // namespace
}  // namespace ml::imagefiles
