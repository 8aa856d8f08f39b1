#include "platform/ordered_replacements.h"

#include <gtest/gtest.h>

#include <vector>

namespace ml::platform {
namespace {

struct Row {
  std::string token, value;
};

std::string Replaced(std::string_view text, const std::vector<Row>& rows, std::size_t mostGrowth = kMostGrowth) {
  return ReplaceInOrder(
      text, rows, [](const Row& row) { return row.value; }, mostGrowth);
}

TEST(OrderedReplacements, OpenValuesToTheRowsBehind) {
  EXPECT_EQ(Replaced("%a%b%a", {{"%a", "1"}, {"%b", "2"}}), "121");
  EXPECT_EQ(Replaced("%a", {{"%a", "<%b>"}, {"%b", "2"}}), "<2>");
  EXPECT_EQ(Replaced("%a", {{"%b", "2"}, {"%a", "<%b>"}}), "<%b>");
  EXPECT_EQ(Replaced("%a", {{"%a", "%a%a"}}), "%a%a") << "not inside itself";
  EXPECT_EQ(Replaced("%%a", {{"%a", "%"}, {"%%", "both"}}), "both");
  EXPECT_EQ(Replaced("", {{"%a", "1"}}), "");
}

TEST(OrderedReplacements, AskOnlyForValuesThatAreWanted) {
  const std::vector<Row> rows = {{"%a", ""}, {"%b", ""}};
  std::string asked;
  ReplaceInOrder("%b%b", rows, [&](const Row& row) { return asked += row.token; });
  EXPECT_EQ(asked, "%b");
}

TEST(OrderedReplacements, StopGrowingAtTheLimit) {
  EXPECT_EQ(Replaced("%a%a", {{"%a", "12345"}}, 6), "1234512345");
  EXPECT_EQ(Replaced("%a%a", {{"%a", "12345"}}, 5), "%a%a");
  EXPECT_EQ(Replaced("%a%b", {{"%a", "1234567"}, {"%b", "1"}}, 4), "%a1") << "later rows still fit";
  std::vector<Row> rows;
  for (int depth = 0; depth < 60; ++depth) {
    const auto next = "%" + std::to_string(depth + 1) + ".";
    rows.push_back({"%" + std::to_string(depth) + ".", next + next + next + next});
  }
  EXPECT_LE(Replaced("%0.", rows).size(), kMostGrowth + 3);
}

}  // namespace
}  // namespace ml::platform
