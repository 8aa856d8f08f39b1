#include "catalogue/tag_file.h"

#include <gtest/gtest.h>

#include "catalogue/image_directory.h"

namespace {

using namespace ml::catalogue;
using ml::test::FileNames;
using ml::test::Names;

ImageList Make(Names paths) {
  ImageList list;
  list.Assign(std::move(paths));
  return list;
}

TEST(TagFile, LinesEndInEitherWayAndCountUpTo259Bytes) {
  const std::string longest(259, 'x');
  EXPECT_EQ(ParseTagFile("a.jpg \t\r\n\r\n  b.jpg\nc\".jpg"), (Names{"a.jpg", "  b.jpg", "c\".jpg"}));
  EXPECT_EQ(ParseTagFile(longest + "y.jpg\nz.jpg"), (Names{longest, "z.jpg"})) << "the tail is no line of its own";
  EXPECT_EQ(BuildTagFile({"a.jpg", "two\nlines.jpg", "b c.jpg"}), "a.jpg\r\nb c.jpg\r\n");
  EXPECT_EQ(BuildTagList({"/d/a.jpg", "/d\r/b.jpg", "/d/c.jpg"}), "/d/a.jpg\n/d/c.jpg\n");
}

TEST(TagFile, TagsTheNamesOfItsDirectory) {
  auto list = Make({"/d/A.jpg", "/d/a.jpg", "/d/b.JPG", "/d/B.jpg", "/e/c.jpg"});
  TagNames(list, "/d/", {"a.jpg", "B.JPG", "c.jpg", "none.jpg"});
  EXPECT_EQ(FileNames(list.TaggedPaths()), (Names{"a.jpg", "b.JPG", "B.jpg"}))
      << "an exact name means that file, any other spelling all that it may mean";
}

TEST(TagList, AppliesByNameOrByStem) {
  const std::string text =
      "/else/where/IMG_1.JPG\r\n \tIMG_2.crw \n/x/" + std::string(4090, 'p') + "/IMG_3.jpg\n/dir/\n\n";
  const Names files = {"/d/IMG_1.CRW", "/d/img_1.jpg", "/d/IMG_2.crw", "/d/IMG_2.txt.jpg", "/d/IMG_3.jpg", "/d/.jpg"};
  auto list = Make(files);
  ApplyTagList(list, text, TagMatch::StemAndExtension);
  EXPECT_EQ(FileNames(list.TaggedPaths()), (Names{"img_1.jpg", "IMG_2.crw"}));
  list = Make(files);
  ApplyTagList(list, text, TagMatch::StemOnly);
  EXPECT_EQ(FileNames(list.TaggedPaths()), (Names{"IMG_1.CRW", "img_1.jpg", "IMG_2.crw"}));
}

}  // namespace
