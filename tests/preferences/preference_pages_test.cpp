#include "app/preferences/preference_pages.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "app/preferences/preference_remarks.h"
#include "app/preferences/preference_search.h"
#include "app/preferences/preference_values.h"
#include "settings/setting_table.h"

namespace ml::app {
namespace {

using settings::SettingType;

class Rows : public testing::Test {
 protected:
  template <class Check>
  void Each(Check check) {
    for (const auto& page : PreferencePages()) {
      for (const auto& row : page.rows) {
        SCOPED_TRACE(row.key);
        check(page, row);
      }
    }
  }
  settings::Settings defaults = settings::MakeDefaultSettings();
};

bool Fits(const PreferenceField& field, SettingType type) {
  const bool whole = type == SettingType::Dword || type == SettingType::Byte;
  if (std::holds_alternative<ChoiceField>(field)) return whole || type == SettingType::String;
  if (std::holds_alternative<CheckField>(field) || std::holds_alternative<NumberField>(field)) return whole;
  return type == SettingType::String;
}

TEST_F(Rows, NameSettingsOfAKindThatTheFieldCanEdit) {
  std::set<std::string_view> seen;
  Each([&](const auto&, const auto& row) {
    const auto* stored = settings::FindSetting(row.key);
    ASSERT_NE(stored, nullptr);
    EXPECT_NE(stored->stored, settings::Stored::ReadOnly) << "the change would be lost";
    EXPECT_TRUE(Fits(row.field, settings::TypeOf(stored->slot(defaults))));
    EXPECT_TRUE(seen.insert(row.key).second) << "offered twice";
  });
}

TEST_F(Rows, CanTakeEveryValueThatTheFieldOffers) {
  Each([&](const auto&, const auto& row) {
    const auto take = [&](const std::string& value) {
      auto settings = defaults;
      SetPreference(row, value, settings);
      EXPECT_EQ(PreferenceValue(row, settings), value);
    };
    if (std::holds_alternative<CheckField>(row.field)) {
      for (const auto* value : {"0", "1"}) take(value);
    } else if (const auto* number = std::get_if<NumberField>(&row.field)) {
      for (const int value : {number->smallest, number->largest}) take(std::to_string(value));
    } else if (const auto* choice = std::get_if<ChoiceField>(&row.field)) {
      for (std::size_t i = 0; i < choice->choices.size(); ++i) {
        take(std::string(choice->choices[i].value));
        EXPECT_EQ(ChoiceOf(*choice, choice->choices[i].value), i) << "two choices mean the same value";
      }
      ASSERT_LT(choice->otherwise, choice->choices.size());
    } else {
      take("/a \"b\" = c");
    }
  });
}

TEST_F(Rows, HaveDefaultsThatTheirFieldsCanShow) {
  Each([&](const auto&, const auto& row) {
    const auto value = PreferenceValue(row, defaults);
    EXPECT_FALSE(RemarkOn(row, value).refused) << value;
    if (const auto* choice = std::get_if<ChoiceField>(&row.field)) {
      EXPECT_EQ(choice->choices[ChoiceOf(*choice, value)].value, value);
    }
  });
}

TEST_F(Rows, NeedFlagsThatStandOnTheSamePage) {
  Each([&](const auto& page, const auto& row) {
    if (row.need.key.empty()) return;
    const auto* above = FindPreference(row.need.key);
    ASSERT_NE(above, nullptr);
    EXPECT_TRUE(std::holds_alternative<CheckField>(above->field));
    EXPECT_TRUE(above >= page.rows.data() && above < &row) << "the user meets the flag first";
    EXPECT_FALSE(row.need.reason.empty());
  });
}

/// The letters of the window itself: Find, Restore Defaults, Apply.
constexpr std::string_view kTaken = "fdy";

TEST_F(Rows, AreReachedByLettersOfTheirOwn) {
  std::map<std::string_view, std::string> letters;
  Each([&](const auto& page, const auto& row) {
    const auto mark = row.label.find('&');
    ASSERT_LT(mark + 1, row.label.size());
    const char letter = static_cast<char>(std::tolower(row.label[mark + 1]));
    auto& taken = letters.try_emplace(page.title, kTaken).first->second;
    EXPECT_EQ(taken.find(letter), std::string::npos) << letter << " stands for something else on " << page.title;
    taken += letter;
  });
}

TEST_F(Rows, StandUnderTheirHeadingsTogether) {
  for (const auto& page : PreferencePages()) {
    std::set<std::string_view> seen;
    std::string_view last;
    for (const auto& row : page.rows) {
      EXPECT_FALSE(row.explanation.empty()) << row.key;
      const bool check = std::holds_alternative<CheckField>(row.field);
      EXPECT_EQ(row.label.ends_with(':'), !check) << row.label << ": a colon leads to the field beside it";
      if (row.heading != last) {
        EXPECT_TRUE(seen.insert(row.heading).second) << row.key << " is parted from its heading";
      }
      last = row.heading;
    }
  }
}

struct NeedCase {
  const char* name;
  const char* key;
  const char* monitor;
  const char* standard;
  const char* reasonHas;
};
TEST(Needs, FollowTheFlagsAboveThem) {
  for (const auto& c :
       {NeedCase{"Flag", "EnableMonitorProfile", "0", "0", ""}, NeedCase{"Off", "MonitorProfile", "0", "0", "monitor"},
        NeedCase{"On", "MonitorProfile", "1", "0", ""},
        NeedCase{"OwnFlagOff", "DefaultProfile", "1", "0", "default profile"},
        NeedCase{"FlagAboveOff", "DefaultProfile", "0", "1", "monitor"},
        NeedCase{"AllOn", "DefaultProfile", "1", "1", ""},
        NeedCase{"TurnedRound", "OpenEditorCmdLine", "0", "0", "desktop"}}) {
    auto settings = settings::MakeDefaultSettings();
    SetPreference(*FindPreference("EnableMonitorProfile"), c.monitor, settings);
    SetPreference(*FindPreference("EnableDefaultProfile"), c.standard, settings);
    const std::string reason(WhyNot(*FindPreference(c.key), settings));
    EXPECT_EQ(reason.empty(), *c.reasonHas == '\0') << c.name << ": " << reason;
    EXPECT_NE(reason.find(c.reasonHas), std::string::npos) << c.name << ": " << reason;
  }
}

TEST(Backgrounds, AreShownAsTheyAreDrawn) {
  const auto& field = std::get<ChoiceField>(FindPreference("ThumbnailBackgroundColour")->field);
  for (const auto& [stored, shown] : {std::pair("white", "White"),
                                      {"GRAY", "Gray"},
                                      {"border", "Gray"},
                                      {"grey", "Gray"},
                                      {"", "Black"},
                                      {"grey border", "Black"},
                                      {"pink", "Black"}}) {
    EXPECT_EQ(field.choices[ChoiceOf(field, stored)].value, shown) << stored;
  }
}

}  // namespace
}  // namespace ml::app
