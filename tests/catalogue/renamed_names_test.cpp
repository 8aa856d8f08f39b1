#include "catalogue/renamed_names.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "catalogue/image_directory.h"
#include "catalogue/order_file.h"
#include "catalogue/tag_file.h"
#include "support/temp_dir.h"

namespace {

using namespace ml::catalogue;
using ml::test::Names;

TEST(RenamedNames, OfABatchThatWasTakenBack) {
  EXPECT_EQ(PathsTakenBack({{"/d/a", "/d/a@"}, {"/d/b", "/d/a"}, {"/d/a@", "/d/b"}, {"/d/c", "/d/e"}}),
            (RenamedPaths{{"/d/a", "/d/b"}, {"/d/b", "/d/a"}, {"/d/e", "/d/c"}}));
}

TEST(RenamedNames, TagsAndOrderFollow) {
  const ml::test::TempDir dir;
  for (const auto* name : {"1.jpg", "2.jpg", "B.jpg", "b.jpg", "other.jpg"}) dir.Write(name, "");
  const auto tags = dir.Write("tagged_files.txt", BuildTagFile({"A.JPG", "other.jpg", "b.jpg", "1.jpg", "gone.jpg"}));
  const DirectoryOrder order{SortMethod::Custom, false, {"other.jpg", "c.jpg", "a.jpg"}};
  const auto orders = dir.Write("marrowlantern.dat", BuildOrderText("", order));
  // What bears the name still was not renamed, whatever its letters; the tag of a 1 that was gone is no tag of the new.
  EXPECT_TRUE(FollowInDirectories({{dir / "a.jpg", dir / "1.jpg"},
                                   {dir / "c.jpg", dir / "B.jpg"},
                                   {dir / "OTHER.jpg", dir / "2.jpg"},
                                   {dir / "other.jpg", "/elsewhere/other.jpg"}})
                  .empty());
  EXPECT_EQ(ml::test::ReadAll(tags).value(), BuildTagFile({"1.jpg", "other.jpg", "b.jpg", "gone.jpg"}));
  DirectoryOrder read;
  ParseOrderText(ml::test::ReadAll(orders).value(), read);
  EXPECT_EQ(read.names, (Names{"other.jpg", "B.jpg", "1.jpg"}));
  EXPECT_EQ(read.sortMethod, SortMethod::Custom);
}

TEST(RenamedNames, FilesThatCannotBeReadAreNamedAndStay) {
  const ml::test::TempDir dir;
  std::filesystem::create_directory(dir / "tagged_files.txt");
  EXPECT_EQ(FollowInDirectories({{dir / "a.jpg", dir / "b.jpg"}}), Names{dir / "tagged_files.txt"});
}

}  // namespace
