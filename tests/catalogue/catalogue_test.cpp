#include "catalogue/catalogue.h"

#include <gtest/gtest.h>

#include "catalogue/open_catalogue.h"

namespace {

using namespace ml::catalogue;
using ml::test::ImageDirectory;
using ml::test::Names;
using ml::test::OpenCatalogue;

TEST(LoadDirectory, ShowsTheDirectoryWithTheWantedFile) {
  const ImageDirectory dir({"x10.jpg", "x9.jpg", "y.jpg", "x9.txt"});
  OpenCatalogue open;
  open.catalogue.LoadDirectory(dir.Path() + "//", dir / "X10.JPG");
  EXPECT_EQ(open.Files(), (Names{"x9.jpg", "x10.jpg", "y.jpg"}));
  EXPECT_EQ(open.told, (Names{"shown " + dir.Path(), "replaced", "visited " + dir.Path(), "image 1"}));
  EXPECT_EQ(open.list.SelectedIndices(), std::vector<int>{1});
  EXPECT_EQ(open.list.focusIndex, 1);
  EXPECT_EQ(open.catalogue.Directory(), dir.Path());
  open.catalogue.LoadDirectory(dir.Path(), dir / "gone.jpg");
  EXPECT_EQ(open.told.back(), "image 0");
  EXPECT_TRUE(open.ask.shown.empty());
}

TEST(LoadDirectory, TellsWhatIsNoDirectoryAndKeepsTheOldOne) {
  const ImageDirectory dir({"a.jpg"});
  OpenCatalogue open(dir.Path());
  open.told.clear();
  open.catalogue.LoadDirectory("", "");
  open.catalogue.LoadDirectory(dir / "gone/", "");
  open.catalogue.LoadDirectory(dir / "a.jpg", "");
  ASSERT_EQ(open.ask.shown.size(), 2U);
  EXPECT_EQ(open.ask.shown[0].text, "Directory does not exist:\n" + dir / "gone");
  EXPECT_EQ(open.ask.shown[1].text, dir / "a.jpg" + "\nis not a directory");
  for (const auto& box : open.ask.shown) EXPECT_EQ(box.caption, "Error");
  EXPECT_EQ(open.Files(), Names{"a.jpg"});
  EXPECT_EQ(open.catalogue.Directory(), dir.Path());
  EXPECT_TRUE(open.told.empty());
}

TEST(LoadDirectory, ADirectoryWithoutImagesIsShownEmpty) {
  const ImageDirectory dir({"full/a.jpg", "empty/a.thm", "empty/.b.jpg"});
  OpenCatalogue open(dir / "full");
  open.Tag({"a.jpg"});
  open.told.clear();
  open.catalogue.LoadDirectory(dir / "empty", "");
  EXPECT_EQ(open.told, (Names{"shown " + dir / "empty", "replaced", "image -1"}));
  EXPECT_TRUE(open.list.Empty());
  EXPECT_EQ(open.catalogue.Directory(), dir / "empty");
  EXPECT_EQ(open.catalogue.NotTaken().hiddenImages, 1);
  EXPECT_EQ(open.catalogue.NotTaken().otherFiles, 1);
  EXPECT_EQ(ml::test::ReadAll(dir / "full/tagged_files.txt"), "a.jpg\r\n");
  EXPECT_FALSE(std::filesystem::exists(dir / "full/marrowlantern.dat")) << "the order is not saved on this way out";
}

TEST(LoadDirectory, ListsTheRawFilesThatCannotBeOpened) {
  const std::string longName = std::string(28, 'x') + ".crw";
  const ImageDirectory dir({"full/a.jpg", "raw/" + longName});
  OpenCatalogue open(dir / "raw");
  ASSERT_EQ(open.ask.shown.size(), 1U);
  EXPECT_EQ(open.ask.shown[0].text,
            "WARNING: the following Canon RAW files could not be loaded because\ntheir names are more than 31 "
            "characters long\n(this is a limitation of Canon's SDK):\n" +
                dir / "raw/" + longName + "\n");
  EXPECT_EQ(open.ask.shown[0].icon, ml::platform::BoxIcon::Warning);
  EXPECT_EQ(open.told, (Names{"shown " + dir / "raw", "replaced", "image -1"}));
  open.catalogue.LoadDirectory(dir / "full", "");
  EXPECT_EQ(open.catalogue.LoadFileList({dir / "raw/" + longName, dir / "gone.jpg"}), 0);
  EXPECT_EQ(open.Files(), Names{"a.jpg"}) << "a list without images leaves the catalogue";
}

TEST(LoadFileList, ShowsJustTheseFilesSorted) {
  const ImageDirectory dir({"1.jpg", "2.jpg", "10.jpg", "sub/3.jpg"});
  OpenCatalogue open;
  EXPECT_EQ(open.catalogue.LoadFileList(dir.Paths({"10.jpg", "2.jpg", "sub/3.jpg", "2.jpg"})), 3);
  EXPECT_EQ(open.Files(), (Names{"2.jpg", "3.jpg", "10.jpg"}));
  EXPECT_EQ(open.told, (Names{"shown " + dir.Path(), "replaced"}));
}

TEST(SortCommands, KeepTheCustomOrderToComeBackTo) {
  const ImageDirectory dir({"1.jpg", "2.jpg", "3.jpg"});
  OpenCatalogue open(dir.Path());
  open.catalogue.SortBy(SortMethod::Custom);
  EXPECT_EQ(open.Files(), (Names{"1.jpg", "2.jpg", "3.jpg"})) << "no custom order yet: all stay";
  open.Drag({"3.jpg", "1.jpg", "2.jpg"});
  open.Tag({"1.jpg"});
  open.told.clear();
  open.catalogue.SortBy(SortMethod::Alphabetical);
  EXPECT_EQ(open.told, Names{"reordered"});
  EXPECT_EQ(open.Files(), (Names{"1.jpg", "2.jpg", "3.jpg"}));
  open.catalogue.ToggleReverseSort();
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "2.jpg", "1.jpg"}));
  EXPECT_EQ(open.list.currentIndex, 2) << "the current image stays the same";
  open.catalogue.SortBy(SortMethod::Custom);
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "1.jpg", "2.jpg"}));
  open.catalogue.ToggleReverseSort();
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "1.jpg", "2.jpg"})) << "direction does not matter in custom order";
  EXPECT_EQ(open.Tagged(), Names{"1.jpg"});
}

TEST(SortCommands, AreRememberedWithAnEmptyCatalogue) {
  OpenCatalogue open;
  open.list.sortMethod = SortMethod::Custom;
  open.list.customOrder = {"/d/a.jpg"};
  open.catalogue.SortBy(SortMethod::FileType);
  open.catalogue.ToggleReverseSort();
  open.catalogue.MoveTaggedToStart();
  EXPECT_EQ(open.list.sortMethod, SortMethod::FileType);
  EXPECT_TRUE(open.list.reverseSort);
  EXPECT_EQ(open.list.customOrder, Names{"/d/a.jpg"});
  EXPECT_TRUE(open.told.empty());
}

TEST(MoveTaggedToStart, MakesACustomOrderOnlyIfSomethingMoves) {
  const ImageDirectory dir({"1.jpg", "2.jpg", "3.jpg", "4.jpg"});
  OpenCatalogue open(dir.Path());
  open.Tag({"1.jpg", "2.jpg"});
  open.catalogue.MoveTaggedToStart();
  EXPECT_EQ(open.list.sortMethod, SortMethod::Numeric);
  open.Tag({"4.jpg"});
  open.catalogue.MoveTaggedToStart();
  EXPECT_EQ(open.Files(), (Names{"1.jpg", "2.jpg", "4.jpg", "3.jpg"}));
  EXPECT_EQ(open.list.sortMethod, SortMethod::Custom);
  EXPECT_EQ(open.list.customOrder, open.list.files);
}

TEST(RefreshDirectory, KeepsMarksAndCurrentImage) {
  const ImageDirectory dir({"1.jpg", "2.jpg", "3.jpg", "4.jpg"});
  OpenCatalogue open(dir.Path());
  open.Tag({"2.jpg", "3.jpg"});
  open.list.SelectOnly(2);
  open.list.marks[0].selected = true;
  open.list.focusIndex = 2;
  open.ShowImage(3);
  dir.Add({"0.jpg"});
  dir.Remove("2.jpg");
  open.told.clear();
  open.catalogue.RefreshDirectory();
  EXPECT_EQ(open.Files(), (Names{"0.jpg", "1.jpg", "3.jpg", "4.jpg"}));
  EXPECT_EQ(open.Tagged(), Names{"3.jpg"});
  EXPECT_EQ(open.told.back(), "image 3");
  EXPECT_EQ(open.list.currentPath, dir / "4.jpg");
  EXPECT_EQ(open.list.SelectedIndices(), (std::vector<int>{1, 2})) << "the current image need not be among them";
  EXPECT_EQ(open.list.focusIndex, 2);
  open.list.SelectOnly(1);
  dir.Remove("1.jpg");
  open.catalogue.RefreshDirectory();
  EXPECT_EQ(open.list.SelectedIndices(), std::vector<int>{2}) << "nothing was left but the current image";
}

TEST(RefreshDirectory, GoesToTheNeighbourOfAnImageThatIsGone) {
  const ImageDirectory dir({"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"});
  OpenCatalogue open(dir.Path());
  open.ShowImage(2);
  for (const char* gone : {"1.jpg", "3.jpg"}) dir.Remove(gone);
  open.catalogue.RefreshDirectory();
  EXPECT_EQ(open.list.currentPath, dir / "4.jpg");
  for (const char* gone : {"4.jpg", "5.jpg"}) dir.Remove(gone);
  open.catalogue.RefreshDirectory();
  EXPECT_EQ(open.list.currentPath, dir / "2.jpg");
}

TEST(RefreshDirectory, ReadsAnEmptyDirectoryAgain) {
  const ImageDirectory dir({"a.txt"});
  OpenCatalogue open(dir.Path());
  dir.Add({"a.jpg"});
  open.catalogue.RefreshDirectory();
  EXPECT_EQ(open.Files(), Names{"a.jpg"});
  OpenCatalogue none;
  none.catalogue.RefreshDirectory();
  EXPECT_TRUE(none.told.empty() && none.ask.shown.empty());
}

TEST(Catalogue, LoadsFiveThousandEntriesInAnyOrder) {
  // A step that compared all with all would take minutes here.
  const ImageDirectory dir;
  Names reversed;
  for (int i = 4999; i >= 0; --i) reversed.push_back("IMG_" + std::to_string(i) + ".JPG");
  dir.Add(reversed);
  OpenCatalogue open(dir.Path());
  for (const auto& name : reversed) open.list.customOrder.push_back(dir / ("img" + name.substr(3)));
  open.catalogue.SortBy(SortMethod::Custom);
  EXPECT_EQ(open.Files(), reversed);
}

}  // namespace
