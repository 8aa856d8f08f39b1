#include "metadata/iptc/iptc_sheet_values.h"

#include <gtest/gtest.h>

#include <set>

#include "metadata/iptc/iptc_compare.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_fields.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;

Items Of(const std::vector<std::pair<int, std::string>>& values) {
  Items items;
  for (const auto& [dataset, value] : values) items.push_back({2, dataset, value});
  return items;
}

const std::string kLong(10'240, 'x');
const std::string kLongest(10'239, 'x');

struct SheetCase {
  const char* name;
  Items existing;
  IptcSheetValues shown;    ///< what of it is edited
  IptcSheetValues entered;  ///< what the user makes of it
  Items expected;
};

const SheetCase kCases[] = {
    {"nothing", {}, {}, {}, {}},
    {"unknown datasets and other records first",
     {{2, 5, "n"}, {1, 90, "\x1b%G"}, {2, 200, "u"}, {2, 25, "k"}, {2, 200, "v"}, {3, 5, "w"}},
     {{5, {"n"}}, {25, {"k"}}},
     {{5, {"m"}}, {25, {"k", "l"}}},
     {{1, 90, "\x1b%G"}, {2, 200, "u"}, {2, 200, "v"}, {3, 5, "w"}, {2, 5, "m"}, {2, 25, "k"}, {2, 25, "l"}}},
    {"repeated values in their order",
     Of({{25, "b"}, {20, "s"}, {25, "a"}, {25, "b"}}),
     {{20, {"s"}}, {25, {"b", "a", "b"}}},
     {{20, {"s"}}, {25, {"b", "a", "b", "c"}}},
     Of({{20, "s"}, {25, "b"}, {25, "a"}, {25, "b"}, {25, "c"}})},
    {"several by-lines stay as long as nobody edits them",
     Of({{80, "p"}, {80, "q"}, {5, "n"}}),
     {{80, {"p", "q"}}, {5, {"n"}}},
     {{80, {"p", "q"}}},
     Of({{80, "p"}, {80, "q"}})},
    {"and give way together", Of({{80, "p"}, {80, "q"}}), {{80, {"p", "q"}}}, {{80, {"r"}}}, Of({{80, "r"}})},
    {"a long caption is let be", Of({{120, kLong}, {5, "n"}}), {{5, {"n"}}}, {{120, {"c"}}}, Of({{120, kLong}})},
    {"one byte less is edited", Of({{120, kLongest}}), {{120, {kLongest}}}, {{120, {"c"}}}, Of({{120, "c"}})},
    {"long keywords keep their place in a list that stays",
     Of({{25, "a"}, {25, kLong}, {25, "b"}}),
     {{25, {"a", "b"}}},
     {{25, {"a", "b"}}},
     Of({{25, "a"}, {25, kLong}, {25, "b"}})},
    {"and come first in one that changed",
     Of({{25, "a"}, {25, kLong}, {25, "b"}}),
     {{25, {"a", "b"}}},
     {{25, {"b"}}},
     Of({{25, kLong}, {25, "b"}})},
    {"bytes that are no text stay",
     Of({{105, "caf\xe9"}}),
     {{105, {"caf\xe9"}}},
     {{105, {"caf\xe9"}}},
     Of({{105, "caf\xe9"}})},
    {"an emptied field goes", Of({{105, "h"}}), {{105, {"h"}}}, {{105, {""}}}, {}},
};

TEST(IptcSheetValues, ComeFromAListAndGoBack) {
  for (const auto& c : kCases) {
    EXPECT_EQ(SheetValuesOf(c.existing), c.shown) << c.name;
    EXPECT_EQ(ItemsOf(c.entered, c.existing), c.expected) << c.name;
    EXPECT_TRUE(IsSameIptc(ItemsOf(SheetValuesOf(c.existing), c.existing), c.existing)) << c.name;
  }
  EXPECT_TRUE(IsIptcLocked(Of({{120, "short"}, {120, kLong}}), 120));
  EXPECT_FALSE(IsIptcLocked(Of({{25, kLong}}), 25)) << "the rest of a list is edited";
  EXPECT_FALSE(IsIptcLocked({{3, 120, kLong}}, 120));
}

TEST(IptcSheetValues, WhatTheImageDidNotTakeStaysEntered) {
  const IptcSheetValues before = {{5, {"n"}}, {7, {"s"}}, {105, {"h"}}};
  const IptcSheetValues entered = {{5, {"m"}}, {7, {"s"}}, {120, {"@file@"}}};
  const IptcSheetValues now = {{5, {"n"}}, {7, {"t"}}, {105, {"h"}}, {120, {"a.jpg"}}, {55, {"20030517"}}};
  const IptcSheetValues shown = {{5, {"m"}}, {7, {"t"}}, {120, {"a.jpg"}}, {55, {"20030517"}}};
  EXPECT_EQ(StillEntered(entered, before, now), shown);
}

TEST(IptcSheetValues, AListIsSplit) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"", {}},
      {" , ;\n", {}},
      {"sea", {"sea"}},
      {" old town, sea;boat\r\nsun\nM\xc3\xbcnchen ", {"old town", "sea", "boat", "sun", "M\xc3\xbcnchen"}},
  };
  for (const auto& [text, words] : cases) EXPECT_EQ(SplitIptcList(text), words) << text;
}

TEST(IptcSheetValues, OnlyWhatWasEditedIsRefused) {
  struct Case {
    IptcSheetValues values;
    int dataset;  ///< 0 is none
    std::string sentence;
  };
  const std::string created = "Invalid date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324";
  const std::string release = "Invalid release date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324";
  const IptcSheetValues original = {{15, {"SPORT"}}, {55, {"someday"}}};
  const Case cases[] = {
      {original, 0, ""},
      {{}, 0, ""},
      {{{15, {"NEWS"}}}, 15, "Category must be three characters or less"},
      {{{15, {"N1"}}}, 15, "Category must consist of alphabetic characters"},
      {{{55, {"2002/03-24"}}}, 0, ""},
      {{{55, {"20020332"}}}, 55, created},
      {{{30, {"tomorrow"}}}, 30, release},
      {{{30, {"tomorrow"}}, {15, {"NEWS"}}, {120, {kLong}}}, 120, "A text must be shorter than 10,240 bytes"},
      {{{25, {"a", kLong}}}, 25, "A text must be shorter than 10,240 bytes"},
  };
  for (const auto& c : cases) {
    const auto fault = FirstIptcFault(c.values, original);
    EXPECT_EQ(fault ? fault->dataset : 0, c.dataset);
    EXPECT_EQ(fault ? fault->sentence : "", c.sentence);
  }
}

TEST(IptcFields, AreAllDatasetsOnceWithKeysOfTheirOwn) {
  std::set<int> datasets;
  std::set<std::pair<IptcPage, char>> keys;
  for (const auto& field : IptcFields()) {
    EXPECT_TRUE(datasets.insert(field.dataset).second) << field.label;
    EXPECT_EQ(FindIptcDataset(field.dataset)->repeated, field.kind == IptcFieldKind::List) << field.label;
    const auto mark = field.label.find('&');
    if (field.kind == IptcFieldKind::Time) continue;  // reached from its date
    ASSERT_LT(mark + 1, field.label.size()) << field.label;
    const auto key = static_cast<char>(field.label[mark + 1] | 0x20);
    EXPECT_TRUE(keys.insert({field.page, key}).second) << field.label;
    // Those of the sheet's buttons and of a list's.
    EXPECT_EQ(std::string_view("lyseawfvt").find(key), std::string_view::npos) << field.label;
    if (field.page == IptcPage::Keywords || field.page == IptcPage::Category) {
      EXPECT_TRUE(key != 'd' && key != 'r') << field.label;
    }
  }
  EXPECT_EQ(datasets.size(), KnownIptcDatasets().size());
}

}  // namespace
}  // namespace ml::metadata
