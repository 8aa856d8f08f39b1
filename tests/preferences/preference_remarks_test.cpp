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
TEST(Remarks, TellWhatIsWrong) {
  const RemarkCase cases[] = {{"Smallest", "ExtraLargeThumbnailSize", "16", false, false},
                              {"TooSmall", "ExtraLargeThumbnailSize", "15", true, true},
                              {"Largest", "HighlightBlinkThreshold", "255", false, false},
                              {"TooLarge", "HighlightBlinkThreshold", "256", true, true},
                              {"Wraps", "HighlightBlinkThreshold", "4294967297", true, true},
                              {"NoNumber", "HighlightBlinkThreshold", "12a", true, true},
                              {"Empty", "HighlightBlinkThreshold", "", true, true},
                              {"Program", "OpenEditorCmdLine", "gimp -n", false, false},
                              {"NoProgram", "OpenEditorCmdLine", "  ", true, false},
                              {"Quoted", "OpenEditorCmdLine", "\"a b c\" -x", false, false},
                              {"OpenQuotes", "OpenEditorCmdLine", " \"a b c -x", true, true},
                              {"NothingQuoted", "OpenEditorCmdLine", "\"ab\" c", true, true},
                              {"LongestText", "OpenEditorCmdLine", std::string(511, 'a'), false, false},
                              {"LongText", "OpenEditorCmdLine", std::string(512, 'a'), true, true},
                              {"NoProfile", "MonitorProfile", "", false, false},
                              {"ProfileGone", "MonitorProfile", "/nowhere/a.icc", true, false},
                              {"Directory", "MonitorProfile", "/tmp", true, false},
                              {"RelativeJunk", "DefaultProfile", "\x01\xff", true, false}};
  for (const auto& c : cases) {
    const auto remark = RemarkOn(*FindPreference(c.key), c.value);
    EXPECT_EQ(!remark.text.empty(), c.told) << c.name << remark.text;
    EXPECT_EQ(remark.refused, c.refused) << c.name;
  }
}

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
