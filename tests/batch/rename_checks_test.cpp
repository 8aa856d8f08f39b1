#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/apply_rename.h"
#include "platform/errors.h"
#include "support/child_process.h"
#include "support/temp_dir.h"

namespace ml::batch {
namespace {

using Names = std::vector<std::string>;

/// What keeps the images, which are made, from getting these names.
std::string Refusal(const test::TempDir& dir, const Names& images, const Names& newNames) {
  NewNames names;
  for (std::size_t i = 0; i < images.size(); ++i) {
    dir.Write(images[i], "");
    names.rows.push_back(
        {.oldName = images[i], .newName = newNames[i], .given = i, .isCanonRaw = images[i].ends_with(".crw")});
  }
  imagefiles::CompanionFinder companions{{}};
  try {
    CheckNewNames(dir / "", names, catalogue::CaseMode::Unchanged, companions);
  } catch (const platform::UserError& error) {
    return error.what();
  }
  return "";
}

TEST(CheckNewNames, TellsTheFirstReason) {
  const std::string k27(27, 'x'), k28(28, 'x');
  struct Case {
    Names images, newNames;
    std::string refusal;
  };
  const Case cases[] = {
      {{"a.jpg", "b.jpg"}, {"b.jpg", "a.jpg"}, ""},
      {{"a.jpg"}, {"x?.jpg"}, "A filename cannot contain any of the following characters:\n\\/:*?\"<>|\nFile: x?.jpg"},
      {{"a.crw"}, {k27 + ".crw"}, ""},
      {{"a.jpg"}, {k28 + ".jpg"}, ""},
      {{"a.crw"},
       {k28 + ".crw"},
       "Filenames for Canon RAW files must be no more than 31 characters long:\nOriginal name: a.crw\nNew name: " +
           k28 + ".crw"},
      {{"a.jpg", "b.jpg", "c.jpg"}, {"x.jpg", "y.jpg", "x.jpg"}, "Duplicate filename: x.jpg"},
      {{"a.jpg", "b.jpg"}, {"x.jpg", "x.jpg"}, "Duplicate filename: x.jpg"},
      {{"a.jpg", "b.jpg"}, {"x.jpg", "X.jpg"}, "Two names differ only in upper and lower case: x.jpg"},
      {{"a.jpg"}, {".jpg"}, "The style gives no usable filename\nOriginal name: a.jpg"},
      {{"a.jpg"}, {"...jpg"}, "The style gives no usable filename\nOriginal name: a.jpg"},
      {{"a.jpg"}, {"x\ny.jpg"}, "The style gives no usable filename\nOriginal name: a.jpg"},
      {{"a.jpg"},
       {std::string(252, 'x') + ".jpg"},
       "The style gives a filename of more than 255 bytes\nOriginal name: a.jpg"},
      // The first name that fails counts, not the first rule.
      {{"a.jpg", "b.jpg", "c.jpg"}, {"x.jpg", "x.jpg", "?.jpg"}, "Duplicate filename: x.jpg"},
  };
  for (const auto& c : cases) EXPECT_EQ(Refusal(test::TempDir(), c.images, c.newNames), c.refusal);
}

TEST(CheckNewNames, LooksAtWhatGoesWithTheImages) {
  const test::TempDir dir;
  dir.Write("a.txt", "");
  dir.Write("x.txt", "a stranger's");
  EXPECT_EQ(Refusal(dir, {"a.jpg"}, {"x.jpg"}),
            "Another file stands where a file that goes with an image is to go:\n" + dir / "x.txt");
  EXPECT_EQ(Refusal(dir, {"a.jpg", "x.jpg"}, {"x.jpg", "y.jpg"}), "") << "it moves on with its own image";
  EXPECT_EQ(Refusal(dir, {"b.jpg", "c.jpg"}, {"y.jpg", "b.jpg"}), "");
}

TEST(CheckNewNames, ConflictsComeBeforeAllElse) {
  NewNames names{
      .rows = {{.oldName = "a.jpg", .newName = "?.jpg", .conflict = true}, {.oldName = "b.jpg", .newName = "b.jpg"}}};
  imagefiles::CompanionFinder companions{{}};
  try {
    CheckNewNames("/", names, catalogue::CaseMode::Unchanged, companions);
    ADD_FAILURE();
  } catch (const platform::UserError& error) {
    EXPECT_STREQ(error.what(), "New names conflict with existing files.\nPlease choose a different renaming scheme");
  }
  EXPECT_EQ(ConflictMessage(names).text, "ERROR: the following filenames conflict with\nexisting files:\n?.jpg");
}

}  // namespace
}  // namespace ml::batch
