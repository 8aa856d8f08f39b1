#include "metadata/iptc/iptc_file.h"

#include <gtest/gtest.h>

#include "metadata/iptc/iptc_validation.h"
#include "platform/errors.h"
#include "support/metadata_blocks.h"
#include "support/small_files.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using namespace std::string_literals;
using Items = std::vector<IptcItem>;
using platform::ExistingFile;
using platform::UserError;

TEST(IptcFile, SavesAndLoadsTheApplicationRecord) {
  const test::TempDir dir;
  const auto path = dir / "a.ipt";
  const Items items = {{2, 25, "one"}, {1, 90, "\x1b%G"}, {2, 120, "\x1f"}, {2, 7, ""}, {2, 5, std::string(5120, 'x')}};
  SaveIptcFile(path, items, ExistingFile::Refuse);
  EXPECT_EQ(test::ReadAll(path)->substr(0, 15), "\x1c\2\0\0\2\0\2\x1c\2\x19\0\3one"s);
  EXPECT_EQ(LoadIptcFile(path), (Items{items[0], items[2], items[3], items[4]}));
  EXPECT_THROW(SaveIptcFile(path, {}, ExistingFile::Refuse), UserError);
  EXPECT_EQ(LoadIptcFile(path).size(), 4U);
}

TEST(IptcFile, LongValuesAreWrittenAndRefusedWhenLoaded) {
  const test::TempDir dir;
  const auto path = dir / "a.ipt";
  SaveIptcFile(path, {{2, 5, std::string(10'240, 'x')}, {2, 5, "n"}}, ExistingFile::Replace);
  EXPECT_EQ(LoadIptcFile(path), (Items{{2, 5, "n"}}));
  SaveIptcFile(path, {{2, 5, std::string(10'239, 'x')}}, ExistingFile::Replace);
  EXPECT_THROW(LoadIptcFile(path), UserError);
  EXPECT_GT(test::ReadAll(path)->size(), 10'239U);
  EXPECT_THROW(LoadIptcFile(dir / "gone.ipt"), UserError);
}

TEST(IptcFile, PassesOverWhatOtherEditorsPutBetween) {
  const test::TempDir dir;
  const auto entries = test::IptcBlock({{.dataset = 90, .value = "G", .record = 1}, {0, "\0\2"s}, {105, "Head"}});
  EXPECT_EQ(LoadIptcFile(dir.Write("a.FFO", "header" + entries + "\0\0"s + test::IptcBlock({{5, "name"}}))),
            (Items{{2, 105, "Head"}, {2, 5, "name"}}));
  EXPECT_TRUE(IsIptcFile("a.FFO"));
  EXPECT_FALSE(IsIptcFile("a.jpg"));
}

TEST(IptcValidation, Categories) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"ABc", ""},
      {"ABCD", "Category must be three characters or less"},
      {"12345", "Category must be three characters or less"},
      {"A1", "Category must consist of alphabetic characters"},
      {"A ", "Category must consist of alphabetic characters"},
      {"\u00c4\u00c4\u00c4", "Category must consist of alphabetic characters"},
  };
  for (const auto& [text, sentence] : cases) EXPECT_EQ(CheckIptcCategory(text).value_or(""), sentence) << text;
}

TEST(IptcValidation, Dates) {
  EXPECT_EQ(CleanIptcDate("2002/03-24"), "20020324");
  for (const auto* text : {"", "20020324", "19000101", "21001231", "20020231"}) {
    EXPECT_FALSE(CheckIptcDate(text, IptcDateKind::Created)) << text;
  }
  for (const auto* text : {"18991231", "21010101", "20020024", "20021301", "20020300", "20020332", "2002032",
                           "200203244", "2002 324", "20.20324", "+2002032"}) {
    EXPECT_EQ(CheckIptcDate(text, IptcDateKind::Created).value_or(""),
              "Invalid date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324")
        << text;
  }
  EXPECT_EQ(CheckIptcDate("x", IptcDateKind::Release).value_or(""),
            "Invalid release date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324");
}

}  // namespace
}  // namespace ml::metadata
