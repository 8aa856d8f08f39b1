#include "metadata/iptc/iptc_merge.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "metadata/iptc/iptc_compare.h"
#include "metadata/iptc/iptc_dates.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;

Items Of(const std::vector<std::pair<int, std::string>>& values) {
  Items items;
  for (const auto& [dataset, value] : values) items.push_back({2, dataset, value});
  return items;
}

/// In universal time or another zone while it lives.
class Zone {
 public:
  explicit Zone(const char* name) {
    ::setenv("TZ", name, 1);
    ::tzset();
  }
  ~Zone() {
    ::unsetenv("TZ");
    ::tzset();
  }
};

struct MergeCase {
  const char* name;
  bool mergeKeywords, onlyReplaceEmpty, leaveExisting;
  Items existing, incoming, expected;
};
const std::string kLong(10'240, 'x');

const MergeCase kCases[] = {
    {"lists are joined, keywords first", true, false, false, Of({{20, "s"}, {25, "a"}, {25, "b"}}),
     Of({{25, "b"}, {25, "c"}, {20, "t"}, {25, "B"}}),
     Of({{25, "a"}, {25, "b"}, {25, "c"}, {25, "B"}, {20, "s"}, {20, "t"}})},
    {"lists are replaced", false, false, false, Of({{25, "a"}, {20, "s"}}), Of({{25, "b"}, {25, "b"}}),
     Of({{25, "b"}, {25, "b"}})},
    {"lists without new values vanish", false, false, false, Of({{25, "a"}}), {}, {}},
    {"or stay", false, false, true, Of({{25, "a"}, {20, "s"}}), Of({{25, ""}}), Of({{25, "a"}, {20, "s"}})},
    {"joined lists stay once", true, true, true, Of({{25, "a"}}), {}, Of({{25, "a"}})},
    {"new values replace", true, false, false, Of({{5, "old"}, {80, "p"}, {80, "q"}}), Of({{80, "r"}, {5, "new"}}),
     Of({{80, "r"}, {5, "new"}})},
    {"values that are there stay, empty ones do not", true, true, false,
     Of({{5, "old"}, {120, ""}, {80, "p"}, {80, "q"}}), Of({{120, "new"}, {5, "new"}, {80, "r"}, {80, "s"}}),
     Of({{120, "new"}, {5, "old"}, {80, "p"}, {80, "q"}})},
    {"an empty new value empties", true, false, false, Of({{5, "old"}}), Of({{5, ""}}), {}},
    {"or is none", true, false, true, Of({{5, "old"}, {7, "s"}}), Of({{5, ""}, {120, "c"}}),
     Of({{120, "c"}, {5, "old"}, {7, "s"}})},
    {"datasets that nobody edits come first and once", true, false, true, Of({{5, "n"}, {200, "u"}, {200, "v"}}),
     Of({{5, "m"}, {200, "w"}, {201, "x"}}), Of({{200, "u"}, {200, "v"}, {5, "m"}, {201, "x"}})},
    {"values too long to be edited stay", true, false, false, Of({{120, kLong}, {200, kLong}, {5, "n"}}),
     Of({{40, kLong}}), Of({{120, kLong}, {200, kLong}})},
    {"unless another one replaces them", true, false, false, Of({{120, kLong}}), Of({{120, "c"}}), Of({{120, "c"}})},
    {"a long and a short keyword stay together",
     false,
     false,
     true,
     Of({{25, "a"}, {25, kLong}}),
     {},
     Of({{25, "a"}, {25, kLong}})},
    {"other records and the version do not take part",
     true,
     false,
     true,
     {{1, 90, "G"}, {2, 0, "2"}, {2, 5, "n"}},
     {{3, 5, "x"}},
     Of({{5, "n"}})},
};

TEST(IptcMerge, FollowsItsRules) {
  for (const auto& c : kCases) {
    const IptcMergeRules rules{.mergeKeywords = c.mergeKeywords,
                               .onlyReplaceEmpty = c.onlyReplaceEmpty,
                               .leaveExistingIfNewEmpty = c.leaveExisting};
    EXPECT_EQ(MergeIptc(c.existing, c.incoming, rules), c.expected) << c.name;
  }
}

TEST(IptcMerge, DateAndTimeOfTheShotTakeTheirPlace) {
  const Zone zone("UTC");
  const IptcMergeRules rules{.timestamp = 1'053'166'272};
  const auto merged =
      MergeIptc(Of({{55, "19990101"}, {200, "u"}, {60, kLong}}), Of({{5, "n"}, {60, "000000+0000"}, {25, "k"}}), rules);
  EXPECT_EQ(merged, Of({{200, "u"}, {55, "20030517"}, {60, "101112+0000"}, {25, "k"}, {5, "n"}}));
}

TEST(IptcDates, NameTheirZone) {
  const std::pair<const char*, const char*> cases[] = {
      {"UTC", "101112+0000"}, {"CET-1CEST", "121112+0200"}, {"NST+3:30", "064112-0330"}};
  for (const auto& [name, text] : cases) {
    const Zone zone(name);
    EXPECT_EQ(IptcTime(1'053'166'272), text);
  }
  const Zone zone("EAST-14");
  EXPECT_EQ(IptcDate(1'053'166'272), "20030518");
}

TEST(IptcMerge, OnlyValuesWithTokensAreExpanded) {
  auto items = Of({{5, "plain"}, {120, "by @owner@"}});
  ExpandIptcValues(items, [](const std::string& text) { return "<" + text + ">"; });
  EXPECT_EQ(items, Of({{5, "plain"}, {120, "<by @owner@>"}}));
}

TEST(IptcCompare, OrderCountsWithinADatasetOnly) {
  const auto list = Of({{25, "a"}, {5, "n"}, {25, "b"}});
  EXPECT_TRUE(IsSameIptc(list, Of({{5, "n"}, {25, "a"}, {25, "b"}})));
  const Items others[] = {Of({{5, "n"}, {25, "b"}, {25, "a"}}),
                          Of({{25, "a"}, {5, "n"}}),
                          Of({{25, "a"}, {5, "n"}, {25, "b"}, {25, "b"}}),
                          Of({{25, "a"}, {5, "N"}, {25, "b"}}),
                          {{2, 25, "a"}, {3, 5, "n"}, {2, 25, "b"}}};
  for (const auto& other : others) {
    EXPECT_FALSE(IsSameIptc(list, other));
    EXPECT_FALSE(IsSameIptc(other, list));
  }
}

}  // namespace
}  // namespace ml::metadata
