#include "imagefiles/display_colour.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "imagefiles/profile_name.h"
#include "imagefiles/thumbnail_maker.h"
#include "support/colour_profiles.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

constexpr unsigned kPainted = 0xc81e5a, kSwapped = 0x5a1ec8;

/// The picture plain, or with a profile that swaps its red and blue.
std::string Jpeg(const std::string& profile, const test::ExifFields& fields = {}) {
  const auto jpeg = EncodeJpeg(test::PaintPlain(32, 24, kPainted), {.quality = 100, .fullChroma = true});
  const auto icc = profile.empty() ? "" : test::IccSegments(profile, 2);
  return test::InsertSegments(jpeg, test::ExifSegment(ExifDirectories(fields)) + icc);
}
std::string Tiff(const std::string& profile) {
  auto directory = PictureDirectory(test::PaintPlain(32, 24, kPainted));
  directory.Undefined(34675, profile);
  return directory.Build();
}
std::string Psd(const std::string& profile) {
  return EncodePsd(test::PaintPlain(32, 24, kPainted), {.resources = test::ImageResources({{1039, profile}})});
}
std::string Png(const std::string& profile) {
  return EncodePng(test::PaintPlain(32, 24, kPainted), {.before = test::PngProfile("icc", profile)});
}
std::string Jp2(const std::string& profile) {
  return EncodeJp2(test::PaintPlain(32, 24, kPainted), {.rate = 1, .profile = profile});
}

class Displayed : public testing::Test {
 protected:
  void SetUp() override {
    ::setenv("MARROWLANTERN_DATA", dir.Path().c_str(), 1);
    dir.Write("profiles/AdobeRGB1998.icc", swapping);
    options.monitorProfile = dir.Write("monitor.icc", test::EncodeProfile({}));
  }
  void TearDown() override { ::unsetenv("MARROWLANTERN_DATA"); }

  /// What became of the colour in the middle.
  static std::string Colour(const imaging::PixelBuffer& pixels, bool changed) {
    const auto* pixel = pixels.Row(pixels.height / 2) + std::ptrdiff_t{pixels.width / 2} * 3;
    const auto near = [&](unsigned colour) {
      for (int i = 0; i < 3; ++i) {
        if (std::abs(std::to_integer<int>(pixel[i]) - static_cast<int>(colour >> (8 * i) & 0xff)) > 4) return false;
      }
      return true;
    };
    if (near(kPainted)) return changed ? "changed without effect" : "painted";
    return near(kSwapped) && changed ? "swapped" : "neither";
  }
  std::string Picture(const std::string& path) const {
    const auto file = CreateImageFile(path, {});
    auto pixels = file->GetBitmap({.maxWidth = 30, .maxHeight = 30, .altWidth = 30, .altHeight = 30}, {});
    const bool changed = ColourManagePicture(pixels, *file, options);
    return Colour(pixels, changed);
  }
  std::string Thumbnail(const std::string& path) const {
    auto pixels = MakeThumbnail(path, 30, {}).pixels;
    const bool changed = ColourManageThumbnail(pixels, path, options);
    return Colour(pixels, changed);
  }

  test::TempDir dir;
  const std::string swapping = test::EncodeProfile({.swapped = true, .name = "Swapping"});
  ColourOptions options;
};

TEST_F(Displayed, EmbeddedProfilesOfAllCarriersCount) {
  struct Case {
    const char* file;
    std::string (*build)(const std::string& profile);
    const char* thumbnail;
  };
  const Case cases[] = {{"a.jpg", [](const auto& profile) { return Jpeg(profile); }, "swapped"},
                        {"a.tif", Tiff, "swapped"},
                        {"a.psd", Psd, "swapped"},
                        {"a.png", Png, "swapped"},
                        {"a.jp2", Jp2, "painted"}};
  for (const auto& c : cases) {
    const auto path = dir.Write(c.file, c.build(swapping));
    EXPECT_EQ(Picture(path), "swapped") << c.file;
    EXPECT_EQ(Thumbnail(path), c.thumbnail) << c.file;
    metadata::ExifData data(path);
    FillProfileName(data);
    EXPECT_EQ(data.iccProfileName, "Swapping") << c.file;
  }
}

TEST_F(Displayed, OptionsDecideOnTheSourceOfFilesWithoutAProfile) {
  struct Case {
    const char* name;
    bool monitor, byDefault, fromExif, suppressed;
    const char *picture, *thumbnail;
  };
  const Case cases[] = {
      {"nothing set", false, true, true, false, "painted", "painted"},
      {"monitor alone", true, false, false, false, "painted", "painted"},
      {"default", true, true, false, false, "swapped", "swapped"},
      {"default, no thumbnails", true, true, false, true, "swapped", "painted"},
      {"shooting data", true, false, true, false, "swapped", "painted"},
  };
  const auto path = dir.Write("a.jpg", Jpeg("", {.make = "Canon", .model = "Canon EOS 10D"}));
  const auto withProfile = dir.Write("b.jpg", Jpeg(test::EncodeProfile({})));
  const auto monitor = options.monitorProfile;
  for (const auto& c : cases) {
    options = {};
    if (c.monitor) options.monitorProfile = monitor;
    if (c.byDefault) options.defaultProfile = dir / "profiles/AdobeRGB1998.icc";
    options.readProfileFromExif = c.fromExif;
    options.suppressThumbnails = c.suppressed;
    EXPECT_EQ(Picture(path), c.picture) << c.name;
    EXPECT_EQ(Thumbnail(path), c.thumbnail) << c.name;
    EXPECT_EQ(Picture(withProfile), c.monitor ? "changed without effect" : "painted") << c.name;
  }
}

TEST_F(Displayed, ShootingDataComeBeforeTheDefault) {
  options.defaultProfile = options.monitorProfile;
  options.readProfileFromExif = true;
  EXPECT_EQ(Picture(dir.Write("a.jpg", Jpeg("", {.make = "Canon", .model = "Canon EOS 10D"}))), "swapped");
  EXPECT_EQ(Picture(dir.Write("b.jpg", Jpeg("", {.make = "Canon", .model = "Canon EOS D60"}))),
            "changed without effect");
}

TEST_F(Displayed, AnEmbeddedProfileOfNoUseLeavesThePicture) {
  options.defaultProfile = dir / "profiles/AdobeRGB1998.icc";
  for (const auto& profile : {test::GreyProfile(), test::ProfileOfSpace("CMYK"), std::string("no profile")}) {
    const auto path = dir.Write("a.jpg", Jpeg(profile));
    EXPECT_EQ(Picture(path), "painted");
    EXPECT_EQ(Thumbnail(path), "painted");
  }
  options.monitorProfile = dir / "gone.icc";
  const auto path = dir.Write("a.jpg", Jpeg(swapping));
  EXPECT_EQ(Picture(path), "painted");
  EXPECT_EQ(Thumbnail(path), "painted");
}

/// The paper's white counts on the large picture, but would only make thumbnails dull.
TEST_F(Displayed, OnlyTheLargePictureIsAbsolute) {
  const auto path = dir.Write("a.jpg", Jpeg(test::EncodeProfile({.mediaWhite = 0.5})));
  EXPECT_EQ(Picture(path), "neither");
  EXPECT_EQ(Thumbnail(path), "changed without effect");
}

TEST(ProfileName, IsEmptyWithoutAProfileAndAfterABrokenOne) {
  const test::TempDir dir;
  for (const auto* profile : {"", "no profile"}) {
    metadata::ExifData data(dir.Write("a.jpg", Jpeg(profile)));
    EXPECT_EQ(data.hasIccProfile, *profile != '\0');
    FillProfileName(data);
    EXPECT_EQ(data.iccProfileName, "");
  }
  metadata::ExifData gone(dir.Write("a.jpg", Jpeg(test::EncodeProfile({.name = "x"}))));
  dir.Write("a.jpg", "");
  FillProfileName(gone);
  EXPECT_EQ(gone.iccProfileName, "");
}

}  // namespace
}  // namespace ml::imagefiles
