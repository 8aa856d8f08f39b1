#include "imagefiles/format_table.h"

#include <gtest/gtest.h>

#include <string>

namespace ml::imagefiles {
namespace {

std::string ClassOf(std::string_view path) {
  const auto* row = FindFormat(path);
  return row == nullptr ? "" : std::string(row->className);
}

TEST(FindFormat, GoesByTheExtensionAlone) {
  const std::pair<const char*, const char*> cases[] = {
      {"/a/photo.JPEG", "JpegImageFile"},
      {"/a/a.jpeg", "JpegImageFile"},
      {"/a/.jpeg", ""},
      {"/a/jpeg", ""},
      {"/a/xjpeg", ""},
      {"/a/.tiff", ""},
      {"/a/.jpg", "JpegImageFile"},
      {"/a/x.Tiff", "TiffImageFile"},
      {"/a/x.JPF", "Jp2ImageFile"},
      {"/a/x.thm", ""},
      {"/a/x.jpg.txt", ""},
      {"/a.jpg/x", ""},
      {"/a/x.", ""},
      {"", ""},
      {"/a/x.pef", "PefImageFile"},
  };
  for (const auto& [path, name] : cases) EXPECT_EQ(ClassOf(path), name) << path;
}

TEST(FileTypeRank, TellsTheJpegSpellingsApart) {
  EXPECT_LT(FileTypeRank("x.JPG"), FileTypeRank("a.jpe"));
  EXPECT_LT(FileTypeRank("x.jpe"), FileTypeRank("a.jpeg"));
  EXPECT_EQ(FileTypeRank("x.raf"), FileTypeRank("x.PEF"));
  EXPECT_EQ(FileTypeRank("x.anything"), FileTypeRank("x.psd"));
  EXPECT_EQ(FileTypeRank("x.avi"), 0);
  EXPECT_EQ(FileTypeRank("x.tiff"), 14);
}

TEST(Formats, CompanionsAndNamesOnTheCommandLine) {
  std::string thm, closed;
  for (const auto& row : Formats()) {
    if (row.hasThm) thm += row.extensions[0];
    if (!row.openByName) closed += row.extensions[0];
  }
  EXPECT_EQ(thm, ".crw.avi");
  EXPECT_EQ(closed, ".nef.avi");
}

TEST(Formats, AgreeWithThemselves) {
  for (const auto& row : Formats()) {
    EXPECT_EQ(row.commentHome == CommentHome::None, !row.commentRefusal.empty()) << row.className;
    EXPECT_TRUE(row.exifCopyRefusal.empty() || row.exifCopyTarget == ExifCopyTarget::No) << row.className;
    EXPECT_EQ(&RowOf(row.format), &row) << "two rows of one format";
  }
}

}  // namespace
}  // namespace ml::imagefiles
