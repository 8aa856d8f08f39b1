#include "rawconvert/conversion_profile.h"

#include <gtest/gtest.h>

#include "support/fakes.h"
#include "support/temp_dir.h"

namespace ml::rawconvert {
namespace {

using namespace profile_flag;

constexpr char k10D[] = "Canon EOS 10D", kD60[] = "Canon EOS D60";

TEST(ConversionProfile, IsChosenByFlagsSpaceAndTable) {
  const test::TempDir dir;
  const auto own = dir.Write("own.icc", "profile"), linear = dir.Write("linear.icc", "profile");
  dir.Write("system/sRGB.icc", "profile");
  const imagefiles::ProfileFinder finder({{.path = dir / "system"}}, dir / "system");
  struct Case {
    const char* model;
    int flags;
    bool linear;
    int matrix;
    const char* space;
    std::string expected;
  };
  for (const auto& c : std::initializer_list<Case>{
           {kD60, 0, false, 0, "", ""},
           {kD60, kEmbedLinear | kAutoSrgb, false, 0, "", ""},
           {kD60, kEmbedNormal | kAutoSrgb, false, 0, "sRGB", own},  // does not record a colour space
           {kD60, kEmbedLinear, true, 0, "", linear},
           {k10D, kEmbedNormal, false, 0, "sRGB", own},
           {k10D, kEmbedNormal | kAutoSrgb, false, 0, "sRGB", dir / "system/sRGB.icc"},
           {k10D, kEmbedNormal | kAutoSrgb, false, 0, "", own},  // no text counts as AdobeRGB
           {k10D, kEmbedNormal | kAutoSrgb, false, 5, "", dir / "system/sRGB.icc"},
           {k10D, kEmbedLinear | kAutoSrgb, true, 4, "sRGB", linear},
           {k10D, kEmbedLinear | kAutoAdobeRgb, true, 4, "sRGB", ""}}) {  // is not to be found
    metadata::ExifData shot;
    shot.model = c.model;
    shot.colorMatrix = c.matrix;
    shot.colorSpace = c.space;
    const RawProfileTable table{
        .linear = {{c.model, linear}}, .normal = {{c.model, own}}, .flags = {{c.model, c.flags}}};
    test::ScriptedInteraction ask;
    EXPECT_EQ(GetConversionProfile(shot, c.linear, table, ask, finder), c.expected)
        << c.model << c.flags << c.matrix << c.space;
    EXPECT_TRUE(ask.shown.empty());
  }
}

TEST(ConversionProfile, TellsOfAFileThatDoesNotExist) {
  metadata::ExifData shot;
  shot.model = kD60;
  const RawProfileTable table{.linear = {}, .normal = {{kD60, "/none.icc"}}, .flags = {{kD60, kEmbedNormal}}};
  test::ScriptedInteraction ask;
  EXPECT_EQ(GetConversionProfile(shot, false, table, ask), "");
  ASSERT_EQ(ask.shown.size(), 1u);
  EXPECT_EQ(ask.shown[0].text, "Profile file does not exist:\n/none.icc");
}

}  // namespace
}  // namespace ml::rawconvert
