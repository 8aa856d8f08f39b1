#include "support/truncation_sweep.h"

#include <string_view>

#include "imagefiles/embedded_profile.h"
#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "platform/errors.h"
#include "support/small_files.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

class TruncatedFile : public testing::TestWithParam<test::SmallFile> {
 protected:
  test::TempDir dir;
  std::string path = dir.Write(GetParam().file, GetParam().content);

  /// A raw file is developed as soon as its preview is cut.
  std::size_t PictureStep() const {
    for (const std::string_view raw : {".nef", ".orf", ".pef", ".raf", ".mrw"}) {
      if (path.ends_with(raw)) return test::kCoarse;
    }
    return 1;
  }
};

TEST_P(TruncatedFile, GivesARecordAtEveryLength) {
  EXPECT_FALSE(metadata::ExifData(path).exifInvalid);
  test::SweepPrefixFiles(path, 1, [](const auto& file) {
    EXPECT_EQ(metadata::ExifData(file).path, file);
    ReadEmbeddedProfile(file);
  });
}

TEST_P(TruncatedFile, IsShownOrRefusedAtEveryLength) {
  const auto show = [](const std::string& file) {
    if (const auto image = CreateImageFile(file, {})) {
      const auto shown = image->GetBitmap({.maxWidth = 20, .maxHeight = 20}, {});
      EXPECT_TRUE(shown.width > 0 && shown.width <= 20) << shown.width;
    }
  };
  show(path);
  test::SweepPrefixFiles<platform::UserError>(path, PictureStep(), show);
}

TEST_P(TruncatedFile, HasAThumbnailOrNoneAtEveryLength) {
  test::SweepPrefixFiles<platform::UserError>(path, PictureStep(), [](const auto& file) {
    const auto made = MakeThumbnail(file, 20, {});
    EXPECT_TRUE(made.pixels.width > 0 && made.pixels.width <= 20) << made.pixels.width;
  });
}

INSTANTIATE_TEST_SUITE_P(Kinds, TruncatedFile, testing::ValuesIn(test::SmallFiles()),
                         [](const auto& c) { return c.param.name; });

}  // namespace
}  // namespace ml::imagefiles
