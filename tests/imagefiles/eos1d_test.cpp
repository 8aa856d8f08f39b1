#include "imagefiles/eos1d_test.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

/// A TIFF of `size` bytes with the image length as a short in its first directory.
std::string Tiff(std::string_view head, std::size_t size) {
  std::string file(head);
  file.resize(size);
  return file;
}

constexpr std::string_view kLittle("II*\0\x08\0\0\0\2\0\0\1\3\0\1\0\0\0\x20\1\0\0\1\1\3\0\1\0\0\0\xc0\0\0\0\0\0\0\0",
                                   38);
constexpr std::string_view kBig("MM\0*\0\0\0\x08\0\1\1\1\0\3\0\0\0\1\0\xc0\0\0\0\0\0\0", 26);
constexpr std::string_view kOther("MM\0*\0\0\0\x08\0\1\1\1\0\3\0\0\0\1\0\xc1\0\0\0\0\0\0", 26);
constexpr std::string_view kNoTag("MM\0*\0\0\0\x08\0\1\1\0\0\3\0\0\0\1\0\xc0\0\0\0\0\0\0", 26);
constexpr std::string_view kWrongMagic("MM\0+\0\0\0\x08\0\1\1\1\0\3\0\0\0\1\0\xc0\0\0\0\0\0\0", 26);
constexpr std::string_view kFarDirectory("MM\0*\xff\xff\xff\xf0", 8);
constexpr std::size_t kMegabyte = 1'048'576;

TEST(CatalogueEos1D, NameSizeAndImageLengthDecide) {
  const test::TempDir dir;
  const auto test = [&](std::string_view name, std::string_view head, std::size_t size = kMegabyte) {
    return catalogueEos1D(dir.Write(name, Tiff(head, size)));
  };
  EXPECT_TRUE(test("a.tif", kLittle));
  EXPECT_TRUE(test("b.TIF", kBig));
  EXPECT_FALSE(test("c.tiff", kBig));
  EXPECT_FALSE(test("d.tif", kBig, kMegabyte - 1));
  EXPECT_FALSE(test("e.tif", kOther));
  EXPECT_FALSE(test("f.tif", kNoTag));
  EXPECT_FALSE(test("g.tif", kWrongMagic));
  EXPECT_FALSE(test("h.tif", kFarDirectory));
  EXPECT_FALSE(test("i.tif", "", kMegabyte));
  EXPECT_FALSE(catalogueEos1D(dir / "missing.tif"));
}

TEST(IsEos1DRawFileTest, WidthAloneOrTheTestOfTheCatalogue) {
  constexpr std::string_view wide("MM\0*\0\0\0\x08\0\1\1\0\0\3\0\0\0\1\0\xc0\0\0\0\0\0\0", 26);
  const test::TempDir dir;
  const auto test = [&](std::string_view name, std::string_view head, std::size_t size) {
    return IsEos1DRawFile(dir.Write(name, Tiff(head, size)));
  };
  EXPECT_TRUE(test("a.tif", wide, 100));
  EXPECT_FALSE(test("a.tiff", wide, 100));
  EXPECT_TRUE(test("b.tif", kBig, kMegabyte));
  EXPECT_FALSE(test("c.tif", kBig, kMegabyte - 1));
  EXPECT_FALSE(test("d.tif", kOther, kMegabyte));
  EXPECT_FALSE(test("e.tif", kFarDirectory, 100));
  EXPECT_FALSE(IsEos1DRawFile(dir / "missing.tif"));
}

}  // namespace
}  // namespace ml::imagefiles
