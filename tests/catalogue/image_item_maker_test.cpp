#include "catalogue/image_item_maker.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "support/colour_profiles.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::catalogue {
namespace {

/// More profiles than a thread remembers, taken by all threads in another order each: no picture may get the
/// transform of another one.
TEST(ImageItemMaker, ColoursThumbnailsOnSeveralThreads) {
  constexpr int kFiles = 6, kThreads = 4, kRounds = 40;
  const test::TempDir dir;
  std::vector<std::string> files;
  for (int i = 0; i < kFiles; ++i) {
    const auto profile = test::EncodeProfile({.swapped = i % 2 == 1, .name = "Profile " + std::to_string(i)});
    const auto jpeg = EncodeJpeg(test::PaintPlain(16, 16, 0xc81e5a), {.quality = 100, .fullChroma = true});
    files.push_back(dir.Write(std::to_string(i) + ".jpg", test::InsertSegments(jpeg, test::IccSegments(profile))));
  }
  imagefiles::ColourOptions colour;
  colour.monitorProfile = dir.Write("monitor.icc", test::EncodeProfile({}));
  const ImageItemMaker make({}, colour);
  std::vector<int> wrong(kThreads);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (int round = 0; round < kRounds; ++round) {
        const int which = (round * (thread + 1) + thread) % kFiles;
        const auto item = make(files[static_cast<std::size_t>(which)], 80);
        const int red = item.pixels.Empty() ? -1 : std::to_integer<int>(item.pixels.data[2]);
        if (std::abs(red - (which % 2 == 1 ? 0x5a : 0xc8)) > 4) ++wrong[static_cast<std::size_t>(thread)];
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(kThreads));
}

}  // namespace
}  // namespace ml::catalogue
