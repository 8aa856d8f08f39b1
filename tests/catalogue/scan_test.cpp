#include "catalogue/scan.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "catalogue/image_directory.h"

namespace {

using namespace ml::catalogue;
using ml::test::FileNames;
using ml::test::ImageDirectory;
using ml::test::Names;

Names Scan(const ImageDirectory& dir, LeftOut& leftOut, ScanOptions options = {}) {
  return FileNames(ScanDirectory(dir.Path(), options, leftOut));
}

TEST(ScanDirectory, TakesImagesByExtensionInAsciiFoldedOrder) {
  const ImageDirectory dir({"b.jpg", "A.JPG", "a.jpg", "c.Jpeg", "c.jpeg.bak", "jpeg", "notes.txt", "c.THM", "c.wav",
                            "d.lnk", "_x.nef", "Zz.tiff", "\xE4.jpg", "two\nlines.jpg", "quote\".jpg"});
  LeftOut leftOut;
  EXPECT_EQ(Scan(dir, leftOut), (Names{"_x.nef", "A.JPG", "a.jpg", "b.jpg", "c.Jpeg", "quote\".jpg", "two\nlines.jpg",
                                       "Zz.tiff", "\xE4.jpg"}));
  EXPECT_EQ(leftOut.otherFiles, 6);
  EXPECT_FALSE(leftOut.unreadable);
}

TEST(ScanDirectory, HidesDotFilesUnlessAsked) {
  const ImageDirectory dir({".a.jpg", ".jpeg", ".profile", "b.jpg", ".jpg"});
  LeftOut leftOut;
  EXPECT_EQ(Scan(dir, leftOut), Names{"b.jpg"});
  EXPECT_EQ(leftOut.hiddenImages, 2);
  EXPECT_EQ(Scan(dir, leftOut, {.showHidden = true}), (Names{".a.jpg", ".jpg", "b.jpg"}));
}

TEST(ScanDirectory, TakesOnlyFilesWithContent) {
  const ImageDirectory dir({"file.jpg", "folder.jpg/inside.jpg", "target"});
  ASSERT_EQ(::mkfifo((dir / "fifo.jpg").c_str(), 0600), 0);
  ASSERT_EQ(::symlink("/dev/zero", (dir / "device.jpg").c_str()), 0);
  ASSERT_EQ(::symlink("loop.jpg", (dir / "loop.jpg").c_str()), 0);
  ASSERT_EQ(::symlink("gone", (dir / "broken.jpg").c_str()), 0);
  ASSERT_EQ(::symlink("folder.jpg", (dir / "tofolder.jpg").c_str()), 0);
  ASSERT_EQ(::symlink("target", (dir / "link.jpg").c_str()), 0);
  LeftOut leftOut;
  EXPECT_EQ(Scan(dir, leftOut), (Names{"file.jpg", "link.jpg"}));
  const auto all = dir.Paths({"fifo.jpg", "device.jpg", "loop.jpg", "broken.jpg", "tofolder.jpg", "link.jpg", "target",
                              "file.jpg", "gone.jpg", "./file.jpg"});
  EXPECT_EQ(ExistingImages(all, {}, leftOut), dir.Paths({"link.jpg", "file.jpg"})) << "in the given order, each once";
}

TEST(ScanDirectory, TellsThatADirectoryCannotBeRead) {
  const ImageDirectory dir;
  LeftOut leftOut;
  EXPECT_TRUE(ScanDirectory(dir / "missing", {}, leftOut).empty());
  EXPECT_TRUE(leftOut.unreadable);
}

TEST(FilterImages, RefusesLongNamesOfRawFiles) {
  const std::string stem27(27, 'x');
  const std::string stem28 = stem27 + "y";
  std::string wide;  // 27 characters in 54 bytes
  for (int i = 0; i < 27; ++i) wide += "\xC3\xA4";
  const ImageDirectory dir;
  dir.WriteEos1D(stem28 + ".tif");
  dir.WriteEos1D(stem27 + ".TIF");
  dir.WriteTiff("plain" + stem28 + ".tif", 100);
  const auto paths = dir.Paths({stem27 + ".crw", stem28 + ".CRW", wide + ".crw", wide + "\xC3\xA4.crw", stem28 + ".jpg",
                                stem28 + ".tif", stem27 + ".TIF", "plain" + stem28 + ".tif", stem28 + ".nef"});
  LeftOut leftOut;
  const auto result = FilterImages(paths, {.bindJpegToEos1DRaw = false}, leftOut);
  EXPECT_EQ(FileNames(result.longNames), (Names{stem28 + ".CRW", wide + "\xC3\xA4.crw", stem28 + ".tif"}));
  EXPECT_EQ(FileNames(result.kept), (Names{stem27 + ".crw", wide + ".crw", stem28 + ".jpg", stem27 + ".TIF",
                                           "plain" + stem28 + ".tif", stem28 + ".nef"}));
  EXPECT_EQ(leftOut.longNames, 3);
}

TEST(FilterImages, DropsTheJpegsForWhichARawFileStands) {
  const ImageDirectory dir({"a.jpg", "B.JPG", "b.jpg", "c.jpeg", "d.jpg", "e.jpg", "d.txt"});
  dir.WriteEos1D("A.TIF");
  dir.WriteEos1D("b.tif");
  dir.WriteEos1D("c.tif");
  dir.WriteTiff("d.tif", 100);
  dir.Write("e.tif", "II*");
  LeftOut leftOut;
  const auto all = ScanDirectory(dir.Path(), {}, leftOut);
  const auto bound = FilterImages(all, {.bindJpegToEos1DRaw = true}, leftOut);
  EXPECT_EQ(FileNames(bound.kept),
            (Names{"A.TIF", "B.JPG", "b.tif", "c.jpeg", "c.tif", "d.jpg", "d.tif", "e.jpg", "e.tif"}))
      << "of B.JPG and b.jpg one belongs to the raw file; another spelling than .jpg never does";
  EXPECT_EQ(leftOut.boundJpegs, 2);
  EXPECT_EQ(FilterImages(all, {.bindJpegToEos1DRaw = false}, leftOut).kept, all);
}

}  // namespace
