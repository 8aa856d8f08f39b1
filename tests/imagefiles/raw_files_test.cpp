#include "imagefiles/raw_files.h"

#include <gtest/gtest.h>

#include "support/camera_raw.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

TEST(IsRawFile, GoesByTheNameAndForTifByTheFile) {
  const test::TempDir dir;
  for (const auto* name : {"a.crw", "a.CRW", "a.thm", "a.nef"}) EXPECT_TRUE(IsRawFile(dir / name)) << name;
  for (const auto* name : {"a.mrw", "a.raf", "a.orf", "a.pef", "a.jpg", "a.tif", ""}) {
    EXPECT_FALSE(IsRawFile(dir / name)) << name;
  }
  const auto raw = test::Eos1DDirectories({}).Build();
  EXPECT_TRUE(IsRawFile(dir.Write("b.TIF", raw)));
  EXPECT_FALSE(IsRawFile(dir.Write("b.tiff", raw)));
}

TEST(CanHoldIptc, InTheFileOrInItsCompanion) {
  const test::TempDir dir;
  for (const auto* name : {"a.jpg", "a.JPE", "a.jpeg", "a.tif", "a.tiff", "a.nef", "a.psd", "a.jp2", "a.png"}) {
    EXPECT_TRUE(CanHoldIptc(dir / name)) << name;
  }
  for (const auto* name : {"a.jpf", "a.gif", "a.bmp", "a.mrw", "a.orf", "a.raf", "a.pef", "a.crw", "a.avi", "a.thm"}) {
    EXPECT_FALSE(CanHoldIptc(dir / name)) << name;
  }
  dir.Write("a.Thm", "");
  EXPECT_TRUE(CanHoldIptc(dir / "a.crw"));
  EXPECT_TRUE(CanHoldIptc(dir / "a.AVI"));
  EXPECT_FALSE(CanHoldIptc(dir / "b.crw"));
}

TEST(CanConvertRaw, KnowsTheCameras) {
  struct Case {
    const char *make, *model;
    bool can;
  };
  const Case cases[] = {
      {"Canon", "Canon PowerShot G2", true},
      {"CANON INC.", "Canon EOS DIGITAL REBEL", true},
      {"Canon", "Canon EOS-1D Mark II", true},
      {"Canon", "EOS 10D", false},  // not at the start
      {"Canon", "Canon PowerShot S70", false},
      {"Canon", "Canon EOS 20D", false},
      {"NIKON CORPORATION", "NIKON D100", true},
      {"NIKON", "E5700", true},
      {"NIKON CORPORATION", "NIKON D1", true},
      {"NIKON CORPORATION", "NIKON D100 ", false},  // the whole model
      {"NIKON CORPORATION", "NIKON D70", false},
      {"OLYMPUS", "E5700", false},
      {"", "Canon EOS D30", false},
  };
  for (const auto& c : cases) {
    metadata::ExifData exif;
    exif.make = c.make;
    exif.model = c.model;
    EXPECT_EQ(CanConvertRaw(exif), c.can) << c.make << ", " << c.model;
  }
}

}  // namespace
}  // namespace ml::imagefiles
