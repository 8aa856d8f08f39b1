#include "imagefiles/image_date.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/dates.h"
#include "platform/file_status.h"
#include "support/ciff_builder.h"
#include "support/jpeg_builder.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using test::TiffBuilder;

const std::string kChanged = "2001:02:03 04:05:06";

class ImageDate : public testing::Test {
 protected:
  test::TempDir dir;

  std::string Write(const std::string& name, const std::string& content) {
    auto path = dir.Write(name, content);
    platform::SetModificationTime(path, *platform::ToTime(*platform::ParseDateTime(kChanged)) * 1'000'000'000);
    return path;
  }
  static std::string DateOf(const std::string& path) { return platform::ExifDateText(GetImageDateTime(path)); }
};

std::string Jpeg(const TiffBuilder& tiff) { return "\xff\xd8" + test::ExifSegment(tiff) + "\xff\xd9"; }

TEST_F(ImageDate, TheFirstOfThreeTagsThatIsNotEmptyDecides) {
  const std::string original = "2003:01:01 00:00:01", digitised = "2003:01:01 00:00:02", last = "2003:01:01 00:00:03";
  struct Case {
    const char* name;
    std::string original, digitised, last, expected;
  };
  const Case cases[] = {
      {"all", original, digitised, last, original},
      {"no original", "", digitised, last, digitised},
      {"only the last", "", "", last, last},
      {"none", "", "", "", kChanged},
      {"the first is no date", "    :  :     :  :  ", digitised, last, kChanged},
      {"dots", "2003.01.01 00.00.01", digitised, last, kChanged},
      {"a year too late", "2038:01:01 00:00:01", digitised, last, kChanged},
  };
  for (const auto& c : cases) {
    for (const auto order : {test::Endian::Little, test::Endian::Big}) {
      const auto exif = TiffBuilder(order).Ascii(36867, c.original).Ascii(36868, c.digitised);
      const auto tiff = TiffBuilder(order).Ascii(306, c.last).Directory(34665, exif);
      EXPECT_EQ(DateOf(Write("a.JPG", Jpeg(tiff))), c.expected) << c.name;
      EXPECT_EQ(DateOf(Write("a.thm", Jpeg(tiff))), c.expected) << c.name;
      EXPECT_EQ(DateOf(Write("a.tiff", tiff.Build())), c.expected) << c.name;
      EXPECT_EQ(DateOf(Write("a.nef", tiff.Build())), c.expected) << c.name;
      EXPECT_EQ(DateOf(Write("a.pef", tiff.Build())), kChanged) << c.name;
    }
  }
}

TEST_F(ImageDate, DamageCostsATiffItsDateAndAJpegWhatFollows) {
  const auto tiff = TiffBuilder().Ascii(306, "2003:01:01 00:00:01").Raw(34665, 4, 1, 60'000);
  EXPECT_EQ(DateOf(Write("a.jpg", Jpeg(tiff))), "2003:01:01 00:00:01");
  EXPECT_EQ(DateOf(Write("a.tif", tiff.Build())), kChanged);
  EXPECT_EQ(DateOf(Write("b.jpg", "no JPEG")), kChanged);
  EXPECT_EQ(DateOf(Write("b.tif", TiffBuilder().Ascii(306, "2003:01:01 00:00:01").FillTo(71).Build())), kChanged);
  EXPECT_EQ(GetImageDateTime(dir / "gone.jpg"), -1);
  EXPECT_EQ(GetImageDateTime(dir / "gone.crw"), -1);
}

TEST_F(ImageDate, CompanionsAndHeaps) {
  const auto thm = Jpeg(TiffBuilder().Ascii(306, "2003:01:01 00:00:01"));
  const auto crw = test::CrwHeap({.width = 32, .height = 16, .previewWidth = 64, .previewHeight = 32});
  const auto alone = Write("alone.crw", crw.BuildFile(test::Endian::Little));
  EXPECT_EQ(DateOf(alone), "2003:05:17 10:11:12");
  const auto pair = Write("pair.crw", crw.BuildFile(test::Endian::Little));
  Write("pair.THM", thm);
  EXPECT_EQ(DateOf(pair), "2003:01:01 00:00:01");
  Write("movie.thm", thm);
  EXPECT_EQ(DateOf(Write("movie.avi", "RIFF")), "2003:01:01 00:00:01");
  EXPECT_EQ(DateOf(Write("silent.avi", "RIFF")), kChanged);
}

}  // namespace
}  // namespace ml::imagefiles
