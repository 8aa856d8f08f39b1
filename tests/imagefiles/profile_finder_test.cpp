#include "imagefiles/profile_finder.h"

#include <gtest/gtest.h>

#include "imagefiles/source_profile.h"
#include "imaging/colour/colour_profile.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

class Profiles : public testing::Test {
 protected:
  ProfileFinder Finder() const {
    return {{{.path = dir / "own"}, {.path = dir / "user"}, {.path = dir / "system", .andBelow = true}}, dir / "own"};
  }
  test::TempDir dir;
};

TEST_F(Profiles, AreFoundInTheFirstFolderThatHasTheName) {
  EXPECT_EQ(Finder().FindProfile("a.icc"), "");
  const char* const places[] = {"system/z/a.icc", "system/b/A.ICC", "system/a.icc", "user/a.icc", "own/a.icc"};
  for (const auto* place : places) {  // each counts before the ones above
    const auto path = dir.Write(place, "");
    EXPECT_EQ(Finder().FindProfile("a.icc"), path);
  }
  dir.Write("user/below/b.icc", "");
  dir.Write("system/one/two/b.icc", "");
  dir.Write("own/b.icc/file", "");
  EXPECT_EQ(Finder().FindProfile("b.icc"), "") << "too deep, or a directory";
}

TEST_F(Profiles, OfAdobeRgbHaveThreeNames) {
  EXPECT_EQ(Finder().FindAdobeRgbProfile(), "");
  const char* const places[] = {"own/compatibleWithAdobeRGB1998.icc", "system/Adobe RGB (1998).icm",
                                "system/colord/AdobeRGB1998.icc"};
  for (const auto* place : places) {
    const auto path = dir.Write(place, "");
    EXPECT_EQ(Finder().FindAdobeRgbProfile(), path);
  }
}

TEST_F(Profiles, OfSrgbAreBuiltInWhereTheSystemHasNone) {
  const auto made = Finder().FindSrgbProfile();
  EXPECT_EQ(made, dir / "own/sRGB.icc");
  EXPECT_TRUE(imaging::ColourProfile::FromFile(made).IsRgb());
  const auto content = test::ReadAll(made);
  EXPECT_EQ(Finder().FindSrgbProfile(), made);
  EXPECT_EQ(test::ReadAll(made), content) << "written once";
  const auto told = dir.Write("system/sRGB Color Space Profile.icm", "");
  EXPECT_EQ(Finder().FindSrgbProfile(), told);
  const auto blocked = dir.Write("file", "");
  EXPECT_EQ(ProfileFinder({{.path = blocked + "/own"}}, blocked + "/own").FindSrgbProfile(), "");
}

TEST_F(Profiles, StandForTheColourSpaceThatACameraRecords) {
  struct Case {
    std::string model;
    ColourMarks marks;
    std::string name;
  };
  const std::string srgb = "own/sRGB.icc", adobe = "own/AdobeRGB1998.icc";
  dir.Write(srgb, "");
  dir.Write(adobe, "");
  const Case cases[] = {
      {"Canon EOS-1DS", {.matrix = 1, .text = "AdobeRGB"}, srgb},
      {"Canon EOS-1D", {.matrix = 4, .text = "sRGB"}, adobe},
      {"Canon EOS-1D", {.matrix = 5}, srgb},
      {"Canon EOS 10D", {.text = "sRGB"}, srgb},
      {"Canon EOS Kiss Digital", {.text = "AdobeRGB"}, adobe},
      {"Canon EOS 300D DIGITAL", {}, adobe},
      {"Canon EOS DIGITAL REBEL", {.text = "sRGB "}, adobe},
      {"Canon EOS D60", {.matrix = 1, .text = "sRGB"}, ""},
      {"canon eos 10d", {.text = "sRGB"}, ""},
      {"", {.text = "sRGB"}, ""},
  };
  for (const auto& c : cases) {
    metadata::ExifData data;
    data.model = c.model;
    data.colorMatrix = c.marks.matrix;
    data.colorSpace = c.marks.text;
    EXPECT_EQ(GetSourceProfile(data, Finder()), c.name.empty() ? "" : dir / c.name)
        << c.model << " " << c.marks.matrix << " " << c.marks.text;
  }
  EXPECT_EQ(RecordedColourSpace("Canon EOS 10D", {.space = 1, .text = "AdobeRGB"}), ColourSpace::Srgb);
  EXPECT_EQ(RecordedColourSpace("Canon EOS 10D", {.space = 2, .text = "sRGB"}), ColourSpace::AdobeRgb);
  EXPECT_EQ(RecordedColourSpace("Canon EOS 10D", {.matrix = 4, .space = 1}), ColourSpace::AdobeRgb);
}

}  // namespace
}  // namespace ml::imagefiles
