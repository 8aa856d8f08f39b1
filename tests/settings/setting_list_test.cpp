#include "settings/setting_list.h"

#include <gtest/gtest.h>

#include "platform/errors.h"
#include "support/refusal.h"

namespace ml::settings {
namespace {

/// The value of `key` as text after the assignment.
std::string After(const std::string& assignment, const std::string& key) {
  Settings settings;
  SetSetting(settings, assignment, SettingUse::ThisRun);
  for (const auto& entry : ListSettings(settings)) {
    if (entry.key == key) return SettingText(entry.value);
  }
  return "no such key";
}

TEST(SetSetting, TakesEachKindOfValue) {
  EXPECT_EQ(After("RawConvertTone=-10", "RawConvertTone"), "-10");
  EXPECT_EQ(After("ThumbnailSize=3", "ThumbnailSize"), "0");
  EXPECT_EQ(After("ExifExportDelimiter=255", "ExifExportDelimiter"), "255");
  EXPECT_EQ(After("RawGamma=2.50", "RawGamma"), "2.5");
  EXPECT_EQ(After("HtmlNextText=a=b ", "HtmlNextText"), "a=b ");
  EXPECT_EQ(After("HtmlNextText=", "HtmlNextText"), "");
  const std::string digits(120, 'A');
  EXPECT_EQ(After("PrintFooterFont=" + digits, "PrintFooterFont"), digits);
}

TEST(SetSetting, RefusesWithASentenceAndChangesNothing) {
  struct Case {
    std::string assignment, sentence;
  };
  const std::string dword = "RawConvertTone takes a whole number from -2147483648 to 2147483647";
  const std::string byte = "FullView takes a whole number from 0 to 255";
  const std::string decimal = "RawGamma takes a decimal number";
  for (const auto& c :
       {Case{"RawGamma", "A setting is given as KEY=VALUE, not: RawGamma"},
        Case{"rawgamma=1", "Unknown setting: rawgamma"}, Case{"=1", "Unknown setting: "},
        Case{"RawConvertTone=", dword}, Case{"RawConvertTone=1x", dword}, Case{"RawConvertTone=1.5", dword},
        Case{"RawConvertTone=2147483648", dword}, Case{"FullView=256", byte}, Case{"FullView=-1", byte},
        Case{"RawGamma=", decimal}, Case{"RawGamma=1,5", decimal}, Case{"RawGamma=inf", decimal},
        Case{"RawGamma=1e999", decimal},
        Case{"PrintFooterFont=" + std::string(119, '0'), "PrintFooterFont takes a font of 120 hexadecimal digits"},
        Case{"HtmlNextText=" + std::string(512, 'x'), "HtmlNextText takes at most 511 bytes"}}) {
    Settings settings;
    EXPECT_EQ(test::Refusal([&] { SetSetting(settings, c.assignment, SettingUse::ThisRun); }), c.sentence);
    EXPECT_EQ(settings.raw.gamma, 1.0);
    EXPECT_EQ(settings.html.nextText, "Next");
  }
}

TEST(SetSetting, LeavesValuesSetByHandToTheFile) {
  Settings settings;
  EXPECT_THROW(SetSetting(settings, "FalseColourFilter=0", SettingUse::Persist), platform::UserError);
  EXPECT_EQ(settings.raw.falseColourFilter, 1);
  SetSetting(settings, "FalseColourFilter=0", SettingUse::ThisRun);
  EXPECT_EQ(settings.raw.falseColourFilter, 0);
}

}  // namespace
}  // namespace ml::settings
