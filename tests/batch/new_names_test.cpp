#include "batch/new_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ml::batch {
namespace {

using Names = std::vector<std::string>;
using catalogue::CaseMode;

std::vector<RenameImage> Images(const Names& names) {
  std::vector<RenameImage> images;
  for (const auto& name : names) images.push_back({.name = name, .facts = {}});
  return images;
}

Names Old(const NewNames& names) {
  Names result;
  for (const auto& row : names.rows) result.push_back(row.oldName);
  return result;
}

Names New(const NewNames& names) {
  Names result;
  for (const auto& row : names.rows) result.push_back(row.newName);
  return result;
}

TEST(BuildNewNames, SortsAsTold) {
  const Names given{"b2.jpg", "A10.jpg", "x.jpg", "a2.jpg", "c.jp2", "B.jpg"};
  auto images = Images(given);
  const std::int64_t times[] = {50, 40, -1, 40, 10, 30};
  for (std::size_t i = 0; i < images.size(); ++i) images[i].facts.shootingTime = times[i];
  const std::pair<RenameSort, Names> cases[] = {
      {RenameSort::Number, {"a2.jpg", "b2.jpg", "c.jp2", "A10.jpg", "B.jpg", "x.jpg"}},
      {RenameSort::Name, {"A10.jpg", "a2.jpg", "B.jpg", "b2.jpg", "c.jp2", "x.jpg"}},
      {RenameSort::Time, {"c.jp2", "B.jpg", "A10.jpg", "a2.jpg", "b2.jpg", "x.jpg"}},
      {RenameSort::AsGiven, given},
  };
  for (const auto& [sort, order] : cases) {
    const auto names = BuildNewNames(images, {.format = "%n", .digits = 1, .sort = sort}, {});
    EXPECT_EQ(Old(names), order);
    for (const auto& row : names.rows) EXPECT_EQ(given[row.given], row.oldName);
  }
}

TEST(BuildNewNames, PutsTheNamesTogether) {
  struct Case {
    RenameStyle style;
    Names images, others, result;
  };
  const Case cases[] = {
      {{.format = "%n", .firstNumber = 9'999'999}, {"a.jpg", "b.CRW"}, {}, {"9999999.jpg", "0000.CRW"}},
      {{.format = "f2.8_%n"}, {"a.jpg"}, {}, {"f2.8_0001.jpg"}},
      {{.format = "%n.%x"}, {"a.JPG"}, {}, {"0001.JPG"}},
      {{.format = "%n.jpg"}, {"a.JPG"}, {}, {"0001.JPG"}},
      {{.format = "x%u", .digits = 2},
       {"a.jpg", "b.crw", "c.jpg"},
       {"X01.txt", "x3.jpg"},
       {"x02.jpg", "x03.crw", "x04.jpg"}},
      {{.format = "%u%u", .digits = 1}, {"a.jpg", "b.jpg"}, {"22.png"}, {"11.jpg", "33.jpg"}},
      // A name that asks for no number blocks one all the same.
      {{.format = "%o", .digits = 1}, {"%u.jpg", "2.jpg", "1.jpg"}, {}, {"1.jpg", "2.jpg", "3.jpg"}},
      {{.format = "x%U"}, {"a.jpg", "b.jpg"}, {"x.txt", "X.THM", "x_1.wav"}, {"x.jpg", "x_2.jpg"}},
      {{.format = "x%U"}, {"a.jpg"}, {"x.crw"}, {"x_1.jpg"}},
      {{.format = "X_%o", .caseMode = CaseMode::LowerExtension}, {"A.JPG", "B.JPEG"}, {}, {"X_A.jpg", "X_B.Jpeg"}},
      {{.format = "X_%o", .caseMode = CaseMode::Lower}, {"A.JPG"}, {}, {"x_a.jpg"}},
      {{.format = "x_%o", .caseMode = CaseMode::Upper}, {"a.jpg"}, {}, {"X_A.JPG"}},
  };
  for (const auto& c : cases) {
    auto result = New(BuildNewNames(Images(c.images), c.style, c.others));
    EXPECT_EQ(result.size(), c.result.size());
    if (c.style.format == "%o") std::ranges::sort(result);
    EXPECT_EQ(result, c.result) << c.style.format;
  }
}

TEST(BuildNewNames, CountsOnOnlyWithARunningNumber) {
  const auto next = [](const char* format, std::int64_t first) {
    return BuildNewNames(Images({"a.jpg", "b.jpg"}), {.format = format, .firstNumber = first}, {}).nextCounter;
  };
  EXPECT_EQ(next("%n", 5), 7);
  EXPECT_EQ(next("%N_%u", 5), 5);
  EXPECT_EQ(next("%n", 9'999'998), 10'000'000);
}

TEST(BuildNewNames, MarksNamesThatOtherFilesBear) {
  const auto names = BuildNewNames(Images({"2.jpg", "3.jpg"}), {.format = "%n", .digits = 1}, {"2.JPG", "1.txt"});
  EXPECT_FALSE(names.rows[0].conflict) << names.rows[0].newName;
  EXPECT_TRUE(names.rows[1].conflict);
  EXPECT_EQ(PreviewText(names), "2.jpg --> 1.jpg\r\n3.jpg --> 2.jpg");
}

/// The told way, number by number and name by name, over many names that differ in nothing else.
TEST(BuildNewNames, FindsTheLowestFreeNumbersAmongThousands) {
  constexpr int kImages = 5000;
  Names images, others;
  for (int i = 0; i < kImages; ++i) images.push_back("IMG_" + std::to_string(i) + ".jpg");
  for (int i = 1; i <= kImages; i += 2) others.push_back("day_" + std::to_string(i) + ".png");
  const auto names = New(BuildNewNames(Images(images), {.format = "day_%u", .digits = 1}, others));
  for (int i = 0; i < kImages; ++i) {
    const int number = i < kImages / 2 ? 2 * (i + 1) : i + kImages / 2 + 1;
    ASSERT_EQ(names[static_cast<std::size_t>(i)], "day_" + std::to_string(number) + ".jpg");
  }
}

TEST(OtherFiles, AreThoseThatTakeNoPart) {
  const test::TempDir dir;
  for (const char* name : {"a.jpg", "A.jpg", "b.JPG", "c.txt"}) dir.Write(name, "");
  auto others = OtherFiles(dir / "", Images({"a.jpg", "b.jpg"}));
  std::ranges::sort(others);
  EXPECT_EQ(others, (Names{"A.jpg", "c.txt"})) << "a name that is there stands for itself alone";
}

}  // namespace
}  // namespace ml::batch
