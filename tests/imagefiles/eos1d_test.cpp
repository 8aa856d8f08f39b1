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
constexpr std::string_view kWideOnly("MM\0*\0\0\0\x08\0\1\1\0\0\3\0\0\0\1\0\xc0\0\0\0\0\0\0", 26);
constexpr std::string_view kWrongMagic("MM\0+\0\0\0\x08\0\1\1\1\0\3\0\0\0\1\0\xc0\0\0\0\0\0\0", 26);
constexpr std::string_view kFarDirectory("MM\0*\xff\xff\xff\xf0", 8);
constexpr std::size_t kMegabyte = 1'048'576;

TEST(Eos1DTests, NameSizeAndTheFirstDirectoryDecide) {
  struct Case {
    const char* name;
    std::string_view head;
    std::size_t size;
    bool catalogue, raw;  ///< by the catalogue's test, and by that which looks at the width too
  };
  const Case cases[] = {
      {"a.tif", kLittle, kMegabyte, true, true},       {"b.TIF", kBig, kMegabyte, true, true},
      {"c.tiff", kBig, kMegabyte, false, false},       {"d.tif", kBig, kMegabyte - 1, false, false},
      {"e.tif", kOther, kMegabyte, false, false},      {"f.tif", kWideOnly, kMegabyte, false, true},
      {"g.tif", kWideOnly, 100, false, true},          {"h.tiff", kWideOnly, 100, false, false},
      {"i.tif", kWrongMagic, kMegabyte, false, false}, {"j.tif", kFarDirectory, kMegabyte, false, false},
      {"k.tif", "", kMegabyte, false, false},
  };
  const test::TempDir dir;
  for (const auto& c : cases) {
    const auto path = dir.Write(c.name, Tiff(c.head, c.size));
    EXPECT_EQ(catalogueEos1D(path), c.catalogue) << c.name;
    EXPECT_EQ(IsEos1DRawFile(path), c.raw) << c.name;
  }
  EXPECT_FALSE(catalogueEos1D(dir / "missing.tif") || IsEos1DRawFile(dir / "missing.tif"));
}

}  // namespace
}  // namespace ml::imagefiles
