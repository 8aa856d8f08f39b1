#include "app/preferences/preference_remarks.h"

#include <gtest/gtest.h>

#include <string>

#include "app/preferences/preference_pages.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

struct RemarkCase {
  const char* name;
  const char* key;
  std::string value;
  bool told, refused;
};
class Remarks : public testing::TestWithParam<RemarkCase> {};

TEST_P(Remarks, TellWhatIsWrong) {
  const auto remark = RemarkOn(*FindPreference(GetParam().key), GetParam().value);
  EXPECT_EQ(!remark.text.empty(), GetParam().told) << remark.text;
  EXPECT_EQ(remark.refused, GetParam().refused);
}
INSTANTIATE_TEST_SUITE_P(Values, Remarks,
                         testing::Values(RemarkCase{"Smallest", "ExtraLargeThumbnailSize", "16", false, false},
                                         RemarkCase{"TooSmall", "ExtraLargeThumbnailSize", "15", true, true},
                                         RemarkCase{"Largest", "HighlightBlinkThreshold", "255", false, false},
                                         RemarkCase{"TooLarge", "HighlightBlinkThreshold", "256", true, true},
                                         RemarkCase{"Wraps", "HighlightBlinkThreshold", "4294967297", true, true},
                                         RemarkCase{"NoNumber", "HighlightBlinkThreshold", "12a", true, true},
                                         RemarkCase{"Empty", "HighlightBlinkThreshold", "", true, true},
                                         RemarkCase{"Program", "OpenEditorCmdLine", "gimp -n", false, false},
                                         RemarkCase{"NoProgram", "OpenEditorCmdLine", "  ", true, false},
                                         RemarkCase{"Quoted", "OpenEditorCmdLine", "\"a b c\" -x", false, false},
                                         RemarkCase{"OpenQuotes", "OpenEditorCmdLine", " \"a b c -x", true, true},
                                         RemarkCase{"NothingQuoted", "OpenEditorCmdLine", "\"ab\" c", true, true},
                                         RemarkCase{"LongestText", "OpenEditorCmdLine", std::string(511, 'a'), false,
                                                    false},
                                         RemarkCase{"LongText", "OpenEditorCmdLine", std::string(512, 'a'), true, true},
                                         RemarkCase{"NoProfile", "MonitorProfile", "", false, false},
                                         RemarkCase{"ProfileGone", "MonitorProfile", "/nowhere/a.icc", true, false},
                                         RemarkCase{"Directory", "MonitorProfile", "/tmp", true, false},
                                         RemarkCase{"RelativeJunk", "DefaultProfile", "\x01\xff", true, false}),
                         [](const auto& c) { return std::string(c.param.name); });

TEST(ProfileRemark, LooksIntoTheFile) {
  const test::TempDir dir;
  const auto& row = *FindPreference("DefaultProfile");
  const std::string head(36, '\0');
  for (const auto& [content, good] :
       {std::pair{head + "acsp", true}, {head + "acs", false}, {head + "acsq", false}, {std::string(), false}}) {
    const auto path = dir.Write("a.icc", content);
    EXPECT_EQ(RemarkOn(row, path).text.empty(), good);
  }
}

}  // namespace
}  // namespace ml::app
