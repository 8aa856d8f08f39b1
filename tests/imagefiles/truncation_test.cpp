#include "support/truncation_sweep.h"

#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "platform/errors.h"
#include "support/small_files.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

class TruncatedFile : public testing::TestWithParam<test::SmallFile> {};

TEST_P(TruncatedFile, IsShownOrRefusedAtEveryLength) {
  const test::TempDir dir;
  const auto path = dir.Write(GetParam().file, GetParam().content);
  const auto show = [](const std::string& file) {
    if (const auto image = CreateImageFile(file, {})) {
      const auto shown = image->GetBitmap({.maxWidth = 20, .maxHeight = 20}, {});
      EXPECT_TRUE(shown.width > 0 && shown.width <= 20) << shown.width;
    }
  };
  show(path);
  test::SweepPrefixFiles<platform::UserError>(path, show);
}

TEST_P(TruncatedFile, HasAThumbnailOrNoneAtEveryLength) {
  const test::TempDir dir;
  const auto path = dir.Write(GetParam().file, GetParam().content);
  test::SweepPrefixFiles<platform::UserError>(path, [](const auto& file) {
    const auto made = MakeThumbnail(file, 20, {});
    EXPECT_TRUE(made.pixels.width > 0 && made.pixels.width <= 20) << made.pixels.width;
  });
}

INSTANTIATE_TEST_SUITE_P(Kinds, TruncatedFile, testing::ValuesIn(test::SmallFiles()),
                         [](const auto& c) { return c.param.name; });

}  // namespace
}  // namespace ml::imagefiles
