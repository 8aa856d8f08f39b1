#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "platform/errors.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

std::vector<std::string> JpegSamples(const std::string& folder) {
  std::vector<std::string> paths;
  if (const auto samples = test::SamplesDir()) {
    for (const auto& entry : std::filesystem::directory_iterator(*samples + "/" + folder)) {
      if (IsJpegName(entry.path().string())) paths.push_back(entry.path().string());
    }
  }
  std::ranges::sort(paths);
  return paths;
}

/// Whether there is a picture; a refusal must be a sentence with the file's name.
bool Shows(const std::string& path) {
  const auto named = [&](const platform::UserError& error) {
    EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
  };
  const ImageFileOptions options{.useJpegExifOrientation = true};
  for (const int size : {80, 160, 240}) {
    try {
      const auto made = MakeThumbnail(path, size, options);
      EXPECT_LE(std::max(made.pixels.width, made.pixels.height), size);
    } catch (const platform::UserError& error) {
      named(error);
    }
  }
  try {
    const auto file = CreateImageFile(path, options);
    const auto bitmap = file->GetBitmap({300, 200}, {.highQuality = true});
    EXPECT_EQ(file->GetHistogram().pixelCount, static_cast<std::uint32_t>(bitmap.width * bitmap.height));
    return true;
  } catch (const platform::UserError& error) {
    named(error);
    return false;
  }
}

TEST(SampleFiles, CameraJpegsShowUnlessTheyAreHeadersOnly) {
  for (const auto& path : JpegSamples("jpeg")) {
    const bool headerOnly =
        path.find("-head.") != std::string::npos || path.find("two-segments.jpg") != std::string::npos;
    if (!headerOnly) {
      EXPECT_TRUE(Shows(path)) << path;
    } else {
      Shows(path);
    }
  }
}

TEST(SampleFiles, DamagedJpegsEndCleanly) {
  for (const auto& path : JpegSamples("damaged")) Shows(path);
}

}  // namespace
}  // namespace ml::imagefiles
