#include "platform/paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ml::platform {
namespace {

TEST(Paths, SplitAtTheLastSlashAndTheLastDot) {
  struct Case {
    const char *path, *directory, *stem, *extension;
  };
  for (const auto& c : {Case{"/a.b/IMG_1.CRW", "/a.b/", "IMG_1", ".CRW"}, Case{"/a.b/name", "/a.b/", "name", ""},
                        Case{"x.tar.gz", "", "x.tar", ".gz"}, Case{"/d/.jpeg", "/d/", "", ".jpeg"},
                        Case{"/d/end.", "/d/", "end", "."}, Case{"/d/a\\b.jpg", "/d/", "a\\b", ".jpg"}}) {
    const auto parts = SplitPath(c.path);
    EXPECT_EQ(parts.directory, c.directory) << c.path;
    EXPECT_EQ(parts.stem, c.stem) << c.path;
    EXPECT_EQ(parts.extension, c.extension) << c.path;
  }
  EXPECT_EQ(WithExtension("/d/IMG_1.CRW", ".thm"), "/d/IMG_1.thm");
  EXPECT_EQ(WithExtension("/d.x/IMG", ".thm"), "/d.x/IMG.thm");
}

TEST(Paths, DirectoriesAreMadeAbsoluteWithoutTouchingTheirBlanks) {
  EXPECT_EQ(normaliseDirectory("/a//b/./c/../"), "/a/b");
  EXPECT_EQ(normaliseDirectory("///"), "/");
  EXPECT_EQ(normaliseDirectory("/a/ends in blank "), "/a/ends in blank ");
  EXPECT_EQ(AbsolutePath("x.jpg"), std::filesystem::current_path().string() + "/x.jpg");
  EXPECT_EQ(AbsolutePath(""), "");
}

TEST(Paths, FoldingForEqualityKnowsUnicodeAndKeepsBrokenBytes) {
  EXPECT_TRUE(EqualsFolded("IMG_\u00C4\u0416.JPG", "img_\u00E4\u0436.jpg"));
  EXPECT_TRUE(
      EqualsFolded("\xE4"
                   "A",
                   "\xE4"
                   "a"));
  EXPECT_FALSE(EqualsFolded("\xE4", "\xC4"));  // Latin bytes are no UTF-8: only ASCII folds
  EXPECT_FALSE(EqualsFolded("stra\u00DFe", "strasse"));
}

TEST(Paths, SortingFoldsAsciiAndLetsBytesDecideTies) {
  std::vector<std::string> names = {"b.jpg", "_a.jpg", "A.jpg", "a.jpg", "B.jpg", "a", "\xC3\xA4.jpg"};
  std::ranges::sort(names, [](const auto& a, const auto& b) { return CompareNoCase(a, b) < 0; });
  EXPECT_EQ(names, (std::vector<std::string>{"_a.jpg", "a", "A.jpg", "a.jpg", "B.jpg", "b.jpg", "\xC3\xA4.jpg"}));
}

TEST(Paths, SameFileFollowsLinksAndTellsCaseVariantsApart) {
  const test::TempDir dir;
  const auto upper = dir.Write("A.jpg", "1");
  const auto lower = dir.Write("a.jpg", "2");
  std::filesystem::create_symlink(upper, dir / "link");
  EXPECT_FALSE(SameFile(upper, lower));
  EXPECT_TRUE(SameFile(upper, dir / "link"));
  EXPECT_TRUE(SameFile(upper, dir.Path() + "/../" + std::filesystem::path(dir.Path()).filename().string() + "/A.jpg"));
  EXPECT_TRUE(SameFile(dir / "gone.jpg", dir / "GONE.JPG"));  // neither exists: by text
}

}  // namespace
}  // namespace ml::platform
