#include "batch/slideshow_caption.h"

#include <gtest/gtest.h>

namespace ml::batch {
namespace {

using Lines = std::vector<std::string>;

TEST(SlideshowCaption, IsCutIntoLines) {
  struct Case {
    const char* text;
    Lines lines;
  };
  const Case cases[] = {{"a.jpg [@imageNumber@ of @numberOfImages@]", {"a.jpg [7 of 12]"}},
                        {"@imageNumber@@imageNumber@", {"77"}},
                        {"  one \\n\ttwo  ", {"one", "two"}},
                        {"one\\n\\ntwo", {"one", "", "two"}},
                        {"\\n \\n one\\n two \\n \\n", {"one", "two"}},
                        {"from the\ncamera", {"from the", "camera"}},
                        {"\\\\n end", {"\\", "end"}},
                        {"\\N\\", {"\\N\\"}},
                        {" \\n ", {}},
                        {"", {}}};
  for (const auto& c : cases) EXPECT_EQ(CaptionLines(c.text, 7, 12), c.lines) << c.text;
}

TEST(SlideshowCaption, LeavesHalfOfTheScreenToThePicture) {
  EXPECT_EQ(LinesThatFit(3, 800, 20), 3);
  EXPECT_EQ(LinesThatFit(5000, 800, 20), 20);
  EXPECT_EQ(LinesThatFit(1, 30, 20), 0);
  EXPECT_EQ(LinesThatFit(2, 800, 0), 2);
}

}  // namespace
}  // namespace ml::batch
