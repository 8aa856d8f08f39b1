#include "settings/setting_table.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <map>
#include <set>

#include "platform/paths.h"
#include "platform/text.h"
#include "settings/setting_list.h"
#include "settings/setting_value.h"
#include "support/map_backend.h"
#include "support/temp_dir.h"

namespace ml::settings {
namespace {

struct TypedRow {
  std::string group, key, type, defaultText;
};

std::vector<TypedRow> ReadTypedRows() {
  const std::string content = test::ReadAll(ML_SOURCE_DIR "/tests/data/settings.tsv").value();
  std::vector<TypedRow> rows;
  for (const auto line : platform::SplitLines(content)) {
    std::vector<std::string> cells(1);
    for (const char c : line) c == '\t' ? cells.emplace_back() : cells.back() += c;
    if (cells.size() != 4) throw std::runtime_error("four cells a line");
    rows.push_back({cells[0], cells[1], cells[2], cells[3]});
  }
  rows.erase(rows.begin());
  return rows;
}

/// The value of a cell in the form in which a type's values are listed.
std::string Expected(const TypedRow& row) {
  if (row.key == "ConvertDirectory") return "/home/somebody/Converted Images";
  if (row.key == "HtmlTemplateBaseDir") return "/data/templates";
  if (row.type == "decimal") return SettingText(std::strtod(row.defaultText.c_str(), nullptr));
  if (row.type == "font") {
    const auto comma = row.defaultText.find(',');
    return platform::FontRecord::FromPoints(row.defaultText.substr(0, comma),
                                            std::stoi(row.defaultText.substr(comma + 1)))
        .Hex();
  }
  return row.defaultText;
}

TEST(SettingTable, HoldsEveryKeyWithItsTypeAndDefault) {
  ::setenv("HOME", "/home/somebody", 1);
  ::setenv("MARROWLANTERN_DATA", "/data", 1);
  const auto typed = ReadTypedRows();
  const auto listed = ListSettings(MakeDefaultSettings());
  ASSERT_EQ(typed.size(), 338u);
  ASSERT_EQ(listed.size(), typed.size());
  for (std::size_t i = 0; i < typed.size(); ++i) {
    EXPECT_EQ(listed[i].key, typed[i].key);
    EXPECT_EQ(SettingTypeName(listed[i].type), typed[i].type) << typed[i].key;
    EXPECT_EQ(SettingText(listed[i].value), Expected(typed[i])) << typed[i].key;
    EXPECT_EQ(listed[i].defaultValue, listed[i].value) << typed[i].key;
  }
}

TEST(SettingTable, IsDividedIntoGroups) {
  std::map<std::string, std::size_t> typed, listed;
  for (const auto& row : ReadTypedRows()) ++typed[row.group];
  for (const auto& group : SettingGroups()) listed[std::string(group.name)] = group.rows.size();
  --listed["display"];  // the one value that is only written
  EXPECT_EQ(listed, typed);
}

TEST(SettingTable, GivesEachKeyItsOwnPlace) {
  Settings settings;
  std::set<const void*> places;
  std::set<std::string_view> keys;
  for (const auto& group : SettingGroups()) {
    for (const auto& row : group.rows) {
      const auto place = std::visit([](const auto* value) -> const void* { return value; }, row.slot(settings));
      EXPECT_TRUE(places.insert(place).second) << row.key;
      EXPECT_TRUE(keys.insert(row.key).second) << row.key;
    }
  }
}

TEST(SettingTable, KeepsUnderstoodNumbersOnly) {
  struct Case {
    const char* key;
    int stored, taken;
  };
  for (const auto& c : {Case{"ThumbnailSize", 1, 1}, Case{"ThumbnailSize", 2, 2}, Case{"ThumbnailSize", 3, 0},
                        Case{"ThumbnailSize", -1, 0}, Case{"ThreadPriority", 2, 2}, Case{"ThreadPriority", 7, 0},
                        Case{"RenameSortMethod", 1, 1}, Case{"RenameSortMethod", 256, 0},
                        // nothing else is looked at
                        Case{"ThumbnailMode", 99, 99}, Case{"SplitterPos", -5, -5}, Case{"JpegQuality", -7, -7},
                        // only the low byte
                        Case{"ConfirmDelete", 256, 0}, Case{"ConfirmDelete", -1, 255}, Case{"FullView", 258, 2}}) {
    test::MapBackend backend;
    backend.PutInteger({c.key}, c.stored);
    Settings settings;
    const auto* row = FindSetting(c.key);
    ASSERT_NE(row, nullptr) << c.key;
    ReadValue(backend, *row, settings);
    test::MapBackend written;
    WriteValue(written, *row, settings);
    EXPECT_EQ(written.Integer({c.key}), c.taken) << c.key << " " << c.stored;
  }
}

}  // namespace
}  // namespace ml::settings
