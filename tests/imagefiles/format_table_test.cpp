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

struct Capability {
  std::string_view className;
  bool isRaw;
  std::string_view rotate, comment;
};

/// What users read when a format cannot do a thing.
TEST(Formats, RefuseInTheirOwnWords) {
  const Capability expected[] = {
      {"JpegImageFile", false, "", ""},
      {"Jp2ImageFile", false, "JPEG 2000 rotation not supported in this version", ""},
      {"CrwImageFile", true, "", ""},
      {"TiffImageFile", false, "", ""},
      {"Eos1DRawImageFile", true, "", ""},
      {"NefImageFile", true, "", ""},
      {"AviImageFile", false, "AVI movie rotation not supported in this version", ""},
      {"PsdImageFile", false, "Photoshop image rotation not supported in this version", ""},
      {"GifImageFile", false, "GIF image rotation not supported in this version",
       "GIF image comments are not supported in this version"},
      {"BmpImageFile", false, "", "BMP image comments are not supported in this version"},
      {"MrwImageFile", false, "Minolta MRW image rotation not supported in this version",
       "Minolta MRW image comments are not supported in this version"},
      {"OrfImageFile", false, "", ""},
      {"RafImageFile", false, "", "Fuji RAF image comments are not supported in this version"},
      {"PefImageFile", false, "Pentax raw image rotation not supported in this version",
       "Pentax raw image comments are not supported in this version"},
      {"PngImageFile", false, "PNG image rotation not supported in this version", ""},
  };
  ASSERT_EQ(Formats().size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    const auto& row = Formats()[i];
    EXPECT_EQ(row.className, expected[i].className);
    EXPECT_EQ(row.isRaw, expected[i].isRaw) << row.className;
    EXPECT_EQ(row.rotateRefusal, expected[i].rotate);
    EXPECT_EQ(row.commentRefusal, expected[i].comment);
    EXPECT_EQ(row.commentHome == CommentHome::None, !row.commentRefusal.empty()) << row.className;
    EXPECT_TRUE(row.exifCopyRefusal.empty() || row.exifCopyTarget == ExifCopyTarget::No) << row.className;
    EXPECT_EQ(&RowOf(row.format), &row) << "two rows of one format";
  }
}

}  // namespace
}  // namespace ml::imagefiles
