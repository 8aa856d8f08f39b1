#include "rawconvert/picture_collection.h"

#include <gtest/gtest.h>

#include "platform/errors.h"
#include "support/fake_developer.h"

namespace ml::rawconvert {
namespace {

TEST(PictureCollection, NamesOver31CharactersAreRefusedWithoutACall) {
  struct Case {
    std::string name;
    bool taken;
  };
  const std::string letters(27, 'x');
  for (const auto& c :
       std::initializer_list<Case>{{letters + ".crw", true},
                                   {letters + "x.crw", false},
                                   {letters.substr(1) + "\u00e4.crw", true},  // one character of two bytes
                                   {std::string("a.crw"), true}}) {
    test::FakeDevelopment sdk;
    PictureCollection pictures("/a deep/" + std::string(40, 'd') + "/" + c.name, sdk);
    pictures.SelectPicture(0);
    EXPECT_EQ(pictures.HasPicture(), c.taken) << c.name;
    EXPECT_EQ(sdk.opened.size(), c.taken ? 1U : 0U) << c.name;
  }
}

TEST(PictureCollection, SelectingLooksForTheFileAgain) {
  test::FakeDevelopment sdk;
  sdk.missingFor = 1;
  PictureCollection pictures("/a.crw", sdk);
  EXPECT_FALSE(pictures.HasPicture());
  pictures.SelectPicture(1);
  EXPECT_FALSE(pictures.HasPicture());
  pictures.SelectPicture(0);
  EXPECT_TRUE(pictures.HasPicture());
}

TEST(PictureCollection, LinearRendersAreAlways16Bit) {
  test::FakeDevelopment sdk;
  PictureCollection pictures("/a.crw", sdk);
  RawDevelopParams params;
  EXPECT_EQ(pictures.Develop(params, {}, {}).bytesPerSample, 1);
  params.SetLinear(true);
  EXPECT_EQ(pictures.Develop(params, {}, {}).bytesPerSample, 2);
  EXPECT_EQ(params.Coefficients(), sdk.computed);
}

}  // namespace
}  // namespace ml::rawconvert
