#include "app/preferences/preference_search.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "app/preferences/preference_pages.h"

namespace ml::app {
namespace {

std::set<std::string_view> KeysFound(std::string_view query) {
  std::set<std::string_view> keys;
  for (const auto& found : FindPreferences(query)) keys.insert(PreferencePages()[found.page].rows[found.row].key);
  return keys;
}

struct SearchCase {
  const char* name;
  const char* query;
  std::set<std::string_view> keys;
};
TEST(Search, FindsRows) {
  for (const auto& c :
       {SearchCase{"Nothing", "", {}}, SearchCase{"Blanks", "  ", {}}, SearchCase{"NoMatch", "zeppelin", {}},
        SearchCase{"LabelAcrossMnemonic", "last dir", {"LoadDirectoryAtStartup"}},
        SearchCase{"Key", "loaddirectoryatstart", {"LoadDirectoryAtStartup"}},
        SearchCase{"Choice", "pro90", {"OptimiseSize"}},
        SearchCase{"Explanation", "begins dot", {"ShowHiddenDirectories"}},
        SearchCase{"WordsInAnyOrderAndCase", "PAPER Printer", {"PrinterProfile"}}}) {
    EXPECT_EQ(KeysFound(c.query), c.keys) << c.name;
  }
}

TEST(Search, TellsWhereInTheOrderOfTheWindow) {
  const auto found = FindPreferences("thumbnail");
  ASSERT_GT(found.size(), 3U);
  for (std::size_t i = 1; i < found.size(); ++i) {
    EXPECT_LT(std::pair(found[i - 1].page, found[i - 1].row), std::pair(found[i].page, found[i].row));
  }
}

}  // namespace
}  // namespace ml::app
