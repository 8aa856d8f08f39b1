#include <gtest/gtest.h>

#include "catalogue/catalogue.h"
#include "catalogue/open_catalogue.h"
#include "catalogue/order_file.h"

namespace {

using namespace ml::catalogue;
using ml::test::ImageDirectory;
using ml::test::Names;
using ml::test::OpenCatalogue;
using ml::test::ReadAll;

/// Two directories to go back and forth between.
class CatalogueMemory : public testing::Test {
 protected:
  const ImageDirectory dir_{{"a/1.jpg", "a/2.jpg", "a/3.jpg", "b/9.jpg"}};
  const std::string a_ = dir_ / "a", b_ = dir_ / "b";

  std::string OrderText(SortMethod method, const Names& names, bool reverse = false) const {
    return BuildOrderText(a_ + "/", {method, reverse, names});
  }
  std::optional<std::string> Order() const { return ReadAll(a_ + "/marrowlantern.dat"); }
  std::optional<std::string> Tags() const { return ReadAll(a_ + "/tagged_files.txt"); }
};

TEST_F(CatalogueMemory, LeavingWritesOrderAndTagsAndComingBackReadsThem) {
  OpenCatalogue open(a_);
  open.catalogue.SortBy(SortMethod::Alphabetical);
  open.catalogue.ToggleReverseSort();
  open.Tag({"1.jpg", "3.jpg"});
  open.catalogue.LoadDirectory(b_, "");
  EXPECT_EQ(Order(), OrderText(SortMethod::Alphabetical, {}, true));
  EXPECT_EQ(Tags(), "3.jpg\r\n1.jpg\r\n") << "in the order of the catalogue";
  open.catalogue.SortBy(SortMethod::Numeric);
  open.catalogue.ToggleReverseSort();
  open.catalogue.LoadDirectory(a_, "");
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "2.jpg", "1.jpg"}));
  EXPECT_EQ(open.Tagged(), (Names{"3.jpg", "1.jpg"}));
  open.list.TagNone();
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), std::nullopt);
}

TEST_F(CatalogueMemory, TheFileHoldsTheCustomOrderAlsoWhileAnotherSortIsOn) {
  OpenCatalogue open(a_);
  open.Drag({"3.jpg", "1.jpg", "2.jpg"});
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Order(), OrderText(SortMethod::Custom, {"3.jpg", "1.jpg", "2.jpg"}));
  open.catalogue.SortBy(SortMethod::Numeric);
  EXPECT_TRUE(open.catalogue.SaveCustomOrder());
  EXPECT_EQ(Order(), OrderText(SortMethod::Numeric, {"3.jpg", "1.jpg", "2.jpg"}));
  OpenCatalogue again(a_);
  EXPECT_EQ(again.Files(), (Names{"1.jpg", "2.jpg", "3.jpg"}));
  again.catalogue.SortBy(SortMethod::Custom);
  EXPECT_EQ(again.Files(), (Names{"3.jpg", "1.jpg", "2.jpg"}));
}

TEST_F(CatalogueMemory, WhatCouldNotBeSavedIsToldAndCanBeSavedLater) {
  OpenCatalogue open(a_);
  open.Tag({"2.jpg"});
  open.Drag({"3.jpg", "1.jpg", "2.jpg"});
  // Something in the way fails as a full disk does.
  const auto order = a_ + "/marrowlantern.dat", tags = a_ + "/tagged_files.txt";
  for (const auto& path : {order, tags}) std::filesystem::create_directories(path + "/x");
  EXPECT_EQ(open.catalogue.SaveOnLeave(), (Names{order, tags}));
  for (const auto& path : {order, tags}) std::filesystem::remove_all(path);
  EXPECT_EQ(open.catalogue.SaveOnLeave(), Names{});
  EXPECT_EQ(Order(), OrderText(SortMethod::Custom, {"3.jpg", "1.jpg", "2.jpg"}));
  EXPECT_EQ(Tags(), "2.jpg\r\n");

  open.list.TagNone();
  std::filesystem::rename(a_, a_ + " away");
  EXPECT_EQ(open.catalogue.SaveOnLeave(), Names{}) << "a directory that is gone keeps nothing";
}

TEST_F(CatalogueMemory, UnchangedFilesAreNotTouched) {
  OpenCatalogue open(a_);
  open.Tag({"2.jpg"});
  open.catalogue.SaveOnLeave();
  const auto old = std::filesystem::last_write_time(a_ + "/1.jpg") - std::chrono::hours(1);
  for (const char* name : {"/marrowlantern.dat", "/tagged_files.txt"}) std::filesystem::last_write_time(a_ + name, old);
  open.catalogue.LoadDirectory(b_, "");
  open.catalogue.LoadDirectory(a_, "");
  open.catalogue.LoadDirectory(b_, "");
  for (const char* name : {"/marrowlantern.dat", "/tagged_files.txt"}) {
    EXPECT_EQ(std::filesystem::last_write_time(a_ + name), old) << name;
  }
}

TEST_F(CatalogueMemory, TheSuppressedOrderFileIsWrittenOnlyAfterDraggingAndAYes) {
  struct Case {
    bool dragged;
    ml::platform::Button answer;
    bool asked, written;
  };
  using enum ml::platform::Button;
  for (const auto& c : {Case{false, Yes, false, false}, Case{true, No, true, false}, Case{true, Yes, true, true}}) {
    OpenCatalogue open(a_);
    open.catalogue.SetOptions({.suppressOrderFile = true});
    open.ask.buttons = {c.answer};
    open.catalogue.SortBy(SortMethod::Timestamp);
    if (c.dragged) open.Drag({"2.jpg"});
    open.catalogue.LoadDirectory(b_, "");
    EXPECT_EQ(open.ask.shown.size(), c.asked ? 1U : 0U);
    if (c.asked) {
      EXPECT_EQ(open.ask.shown[0].text,
                "Do you wish to save the thumbnail order\nthe Marrowlantern.dat file?\n"
                "(This has been disabled in Preferences)");
    }
    EXPECT_EQ(Order().has_value(), c.written);
  }
}

TEST_F(CatalogueMemory, TheSameDirectoryAgainLosesNothing) {
  OpenCatalogue open(a_);
  open.Tag({"2.jpg"});
  open.Drag({"3.jpg", "1.jpg", "2.jpg"});
  dir_.Add({"a/0.jpg"});
  open.catalogue.LoadDirectory(a_, "");
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "1.jpg", "2.jpg", "0.jpg"})) << "new files go to the end";
  EXPECT_EQ(open.Tagged(), Names{"2.jpg"});
  EXPECT_EQ(Order(), std::nullopt) << "nothing was left, nothing is saved";
  EXPECT_EQ(Tags(), std::nullopt);
  EXPECT_TRUE(open.list.orderChangedByHand);
  open.catalogue.SortBy(SortMethod::Numeric);
  open.catalogue.RefreshDirectory();
  EXPECT_EQ(open.Files().front(), "0.jpg");
  open.catalogue.SortBy(SortMethod::Custom);
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "1.jpg", "2.jpg", "0.jpg"}));
}

TEST_F(CatalogueMemory, SomeFilesOfADirectoryKeepWhatIsSaidOfTheOthers) {
  dir_.Write("a/marrowlantern.dat", OrderText(SortMethod::Custom, {"3.jpg", "gone.jpg", "2.jpg", "1.jpg"}));
  dir_.Write("a/tagged_files.txt", "3.jpg\r\ngone.jpg\r\n2.jpg\r\n");
  OpenCatalogue open;
  ASSERT_EQ(open.catalogue.LoadFileList({a_ + "/1.jpg", a_ + "/2.jpg"}), 2);
  EXPECT_EQ(open.Files(), (Names{"2.jpg", "1.jpg"}));
  EXPECT_EQ(open.Tagged(), Names{"2.jpg"});
  open.list.TagNone();
  open.Tag({"1.jpg"});
  open.Drag({"1.jpg", "2.jpg"});
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Order(), OrderText(SortMethod::Custom, {"3.jpg", "1.jpg", "2.jpg"}));
  EXPECT_EQ(Tags(), "3.jpg\r\n1.jpg\r\n");
  open.list.TagNone();
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), "3.jpg\r\n");
}

TEST_F(CatalogueMemory, GoingFromAllToSomeFilesAndBackLosesNothing) {
  OpenCatalogue open(a_);
  open.Tag({"1.jpg", "3.jpg"});
  open.Drag({"3.jpg", "2.jpg", "1.jpg"});
  open.catalogue.LoadFileList({a_ + "/2.jpg", a_ + "/1.jpg"});
  EXPECT_EQ(open.Files(), (Names{"2.jpg", "1.jpg"}));
  EXPECT_EQ(open.Tagged(), Names{"1.jpg"});
  open.Tag({"2.jpg"});
  open.Drag({"1.jpg", "2.jpg"});
  open.catalogue.LoadDirectory(a_, "");
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "1.jpg", "2.jpg"}));
  EXPECT_EQ(open.Tagged(), (Names{"3.jpg", "1.jpg", "2.jpg"}));
}

TEST_F(CatalogueMemory, FilesOfOtherDirectoriesAreNotNotedHere) {
  OpenCatalogue open;
  open.catalogue.LoadFileList({a_ + "/1.jpg", b_ + "/9.jpg"});
  open.list.SelectAll();
  open.list.TagSelected();
  open.Drag({"1.jpg"});
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), "1.jpg\r\n");
  EXPECT_EQ(Order(), OrderText(SortMethod::Custom, {"1.jpg"}));
}

TEST_F(CatalogueMemory, WhatCannotBeReadIsNeitherWrittenNorDeleted) {
  for (const char* name : {"a/marrowlantern.dat", "a/tagged_files.txt"}) {
    std::filesystem::create_symlink("later", dir_ / name);
  }
  OpenCatalogue open(a_);
  open.Tag({"1.jpg"});
  // The medium is back: what was on it must not be replaced by what was seen without it.
  dir_.Write("a/later", "3.jpg\r\n");
  EXPECT_FALSE(open.catalogue.SaveCustomOrder());
  EXPECT_FALSE(open.catalogue.SaveTags());
  open.list.TagNone();
  open.catalogue.LoadDirectory(b_, "");
  EXPECT_EQ(ReadAll(a_ + "/later"), "3.jpg\r\n");
  EXPECT_TRUE(std::filesystem::is_symlink(a_ + "/tagged_files.txt"));
  open.catalogue.LoadDirectory(a_, "");
  EXPECT_EQ(open.Tagged(), Names{"3.jpg"}) << "the next visit reads it";
}

TEST_F(CatalogueMemory, CopiesOfTheProgramKeepEachOthersTags) {
  dir_.Write("a/tagged_files.txt", "1.jpg\r\n");
  OpenCatalogue open(a_), idle(a_);
  open.Tag({"2.jpg"});
  open.list.SetTag(0, false);
  open.catalogue.SaveOnLeave();
  idle.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), "2.jpg\r\n") << "what nobody changed there is left alone";
  idle.Tag({"3.jpg"});
  idle.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), "2.jpg\r\n3.jpg\r\n");
  open.list.SetTag(0, true);
  open.catalogue.SaveOnLeave();
  open.list.SetTag(0, false);
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), "2.jpg\r\n3.jpg\r\n") << "a tag that came and went between two saves";
  dir_.Remove("a/tagged_files.txt");
  open.catalogue.SaveOnLeave();
  EXPECT_EQ(Tags(), "2.jpg\r\n") << "a lost file is written again";
}

TEST_F(CatalogueMemory, SavedAndLoadedOrders) {
  OpenCatalogue open(a_);
  open.catalogue.SortBy(SortMethod::Timestamp);
  open.catalogue.SortBy(SortMethod::Alphabetical);
  open.catalogue.ToggleReverseSort();
  const auto saved = dir_ / "saved.dat";
  open.catalogue.SaveCustomOrderAs(saved);
  EXPECT_EQ(ReadAll(saved),
            BuildOrderText(dir_.Path() + "/", {SortMethod::Custom, false, {"3.jpg", "2.jpg", "1.jpg"}}));
  EXPECT_EQ(open.list.sortMethod, SortMethod::Alphabetical);

  open.catalogue.ToggleReverseSort();
  EXPECT_TRUE(open.catalogue.LoadCustomOrder(saved));
  EXPECT_EQ(open.Files(), (Names{"3.jpg", "2.jpg", "1.jpg"})) << "names are looked for in the directory on show";
  EXPECT_EQ(open.list.sortMethod, SortMethod::Custom);

  open.catalogue.SortBy(SortMethod::Numeric);
  const auto order = open.list.customOrder;
  dir_.Write("nothing.dat", "<marrowlantern><files order=\"filetype\" reverse=\"1\"></files></marrowlantern>");
  EXPECT_FALSE(open.catalogue.LoadCustomOrder(dir_ / "nothing.dat"));
  EXPECT_FALSE(open.catalogue.LoadCustomOrder(dir_ / "missing.dat"));
  EXPECT_EQ(open.Files(), (Names{"1.jpg", "2.jpg", "3.jpg"}));
  EXPECT_EQ(open.list.sortMethod, SortMethod::Numeric);
  EXPECT_EQ(open.list.customOrder, order);
  EXPECT_TRUE(open.list.reverseSort) << "the direction is not put back";

  EXPECT_TRUE(open.ask.shown.empty());
  open.catalogue.SaveCustomOrderAs(dir_ / "no/directory.dat");
  ASSERT_EQ(open.ask.shown.size(), 1U);
}

TEST_F(CatalogueMemory, TagListsRoundTripAndMerge) {
  OpenCatalogue open(a_);
  open.Tag({"1.jpg", "3.jpg"});
  const auto saved = dir_ / "my.tag";
  open.catalogue.SaveTagList(saved);
  EXPECT_EQ(ReadAll(saved), a_ + "/1.jpg\n" + a_ + "/3.jpg\n");
  open.list.TagNone();
  open.Tag({"2.jpg"});
  open.catalogue.LoadTagList(saved, EarlierTags::Keep, TagMatch::StemAndExtension);
  EXPECT_EQ(open.list.TaggedCount(), 3);
  dir_.Write("stems.tag", "C.x\n2.CRW\n");
  open.catalogue.LoadTagList(dir_ / "stems.tag", EarlierTags::Drop, TagMatch::StemOnly);
  EXPECT_EQ(open.Tagged(), Names{"2.jpg"});
  EXPECT_TRUE(open.ask.shown.empty());
  open.catalogue.LoadTagList(dir_ / "missing.tag", EarlierTags::Drop, TagMatch::StemAndExtension);
  open.catalogue.SaveTagList(dir_ / "no/directory.tag");
  ASSERT_EQ(open.ask.shown.size(), 2U);
  EXPECT_EQ(open.ask.shown[1].text, "Unable to write to file:\n" + dir_ / "no/directory.tag");
  EXPECT_EQ(open.Tagged(), Names{"2.jpg"}) << "a file that cannot be read clears nothing";
}

}  // namespace
