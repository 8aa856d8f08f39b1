#include "catalogue/order_file.h"

#include <gtest/gtest.h>

#include "catalogue/image_directory.h"

namespace {

using namespace ml::catalogue;
using ml::test::FileNames;
using ml::test::ImageDirectory;
using ml::test::Names;

TEST(OrderFile, IsWrittenByteForByte) {
  EXPECT_EQ(BuildOrderText("/my \"best\"/", {SortMethod::Timestamp, true, {"a&b.jpg", "two\nlines.jpg", "q\".jpg"}}),
            "<?xml version=\"1.0\" ?>\r\n"
            "<marrowlantern version=\"2.1\">\r\n"
            "\t<files directory=\"/my &quot;best&quot;/\" order=\"timestamp\" reverse=\"1\">\r\n"
            "\t\t<file name=\"a&b.jpg\"/>\r\n"
            "\t\t<file name=\"q&quot;.jpg\"/>\r\n"
            "\t</files>\r\n"
            "</marrowlantern>\r\n");
  EXPECT_EQ(BuildOrderText("/d/", {SortMethod::Custom, true, {}}),
            "<?xml version=\"1.0\" ?>\r\n"
            "<marrowlantern version=\"2.1\">\r\n"
            "\t<files directory=\"/d/\" order=\"custom\" reverse=\"0\">\r\n"
            "\t</files>\r\n"
            "</marrowlantern>\r\n");
}

struct ParseCase {
  const char* what;
  std::string text;
  SortMethod method;
  bool reverse;
  Names names;
};

TEST(OrderFile, IsReadTolerantly) {
  using enum SortMethod;
  const auto wrap = [](const std::string& inner) {
    return "<marrowlantern version=\"9\">" + inner + "</marrowlantern>";
  };
  const ParseCase cases[] = {
      {"nothing", "", Timestamp, false, {}},
      {"no root", "<files order=\"numeric\"><file name=\"a\"/></files>", Timestamp, false, {}},
      {"another case of the root", "<Marrowlantern><files order=\"numeric\">", Timestamp, false, {}},
      {"a ready file",
       wrap("<files directory=\"C:/x/\" order=\"filetype\" reverse=\"1\">\r\n<file name=\"a\"/>\r\n"
            "<file name=\"b>c &quot;d&quot; &amp;\"/></files>"),
       FileType,
       true,
       {"a", "b>c \"d\" &amp;"}},
      {"another case of the word", wrap("<files order=\"Custom\"><file name=\"a\"/></files>"), Timestamp, false, {"a"}},
      {"reverse counts above 0", wrap("<files reverse=\"2\"></files>"), Timestamp, true, {}},
      {"and not below", wrap("<files reverse=\"-1\"></files>"), Timestamp, false, {}},
      {"custom clears reverse", wrap("<files reverse=\"1\" order=\"custom\"></files>"), Custom, false, {}},
      {"the last list wins, attributes add up",
       wrap("<files order=\"numeric\" reverse=\"1\"><file name=\"a\"/></files><files order=\"alphabetical\">"
            "<file name=\"b\"/></files>"),
       Alphabetical,
       true,
       {"b"}},
      {"unknown tags and attributes",
       wrap("<x y=\"<files>\"/><files z w=\"1\" order=\"numeric\"><new/><file size=\"1\" "
            "name=\"a\" name=\"b\"/></files><file name=\"c\"/>"),
       Numeric,
       false,
       {"a", "b"}},
      {"an unquoted value ends the attributes",
       wrap("<files reverse=1 order=\"numeric\"><file name=\"a\"/>"),
       Timestamp,
       false,
       {"a"}},
      {"a file cut short",
       "<marrowlantern><files order=\"custom\"><file name=\"a\"/><file name=\"b",
       Custom,
       false,
       {"a"}},
  };
  for (const auto& c : cases) {
    DirectoryOrder order{Timestamp, false, {}};
    ParseOrderText(c.text, order);
    EXPECT_EQ(order.sortMethod, c.method) << c.what;
    EXPECT_EQ(order.reverse, c.reverse) << c.what;
    EXPECT_EQ(order.names, c.names) << c.what;
  }
}

TEST(OrderFile, ACustomOrderArrangesTheListAndRemembersMissingFiles) {
  const ImageDirectory dir;
  const auto path =
      dir.Write("marrowlantern.dat",
                BuildOrderText("/elsewhere/", {SortMethod::Custom, false, {"C.jpg", "gone.jpg", "B.jpg", "a.jpg"}}));
  ImageList catalogue;
  catalogue.reverseSort = true;
  auto list = dir.Paths({"a.jpg", "b.jpg", "B.jpg", "c.jpg", "d.jpg"});
  EXPECT_EQ(LoadOrderFile(path, list, catalogue), ReadState::Read);
  EXPECT_EQ(FileNames(list), (Names{"c.jpg", "B.jpg", "a.jpg", "b.jpg", "d.jpg"}));
  EXPECT_EQ(catalogue.sortMethod, SortMethod::Custom);
  EXPECT_FALSE(catalogue.reverseSort);
  EXPECT_EQ(catalogue.customOrder, dir.Paths({"C.jpg", "gone.jpg", "B.jpg", "a.jpg"}));
}

TEST(OrderFile, CustomOrderWithoutAFileTurnsAlphabetical) {
  const ImageDirectory dir;
  ImageList catalogue;
  catalogue.sortMethod = SortMethod::Custom;
  catalogue.customOrder = {"/old/x.jpg"};
  Names list = dir.Paths({"b.jpg", "a.jpg"});
  EXPECT_EQ(LoadOrderFile(dir / "marrowlantern.dat", list, catalogue), ReadState::Missing);
  EXPECT_EQ(catalogue.sortMethod, SortMethod::Alphabetical);
  EXPECT_TRUE(catalogue.customOrder.empty());
  std::filesystem::create_directory(dir / "marrowlantern.dat");
  EXPECT_EQ(LoadOrderFile(dir / "marrowlantern.dat", list, catalogue), ReadState::Unreadable);
}

TEST(ListFile, IsTouchedOnlyIfItChanges) {
  const ImageDirectory dir;
  const auto path = dir / "list";
  EXPECT_EQ(WriteIfChanged(path, "one"), WriteState::Written);
  const auto old = std::filesystem::last_write_time(path) - std::chrono::hours(1);
  std::filesystem::last_write_time(path, old);
  EXPECT_EQ(WriteIfChanged(path, "one"), WriteState::Unchanged);
  EXPECT_EQ(std::filesystem::last_write_time(path), old);
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  EXPECT_EQ(WriteIfChanged(path, "two"), WriteState::Written) << "a read-only file is made writable first";
  EXPECT_EQ(ml::test::ReadAll(path), "two");
  EXPECT_EQ(WriteIfChanged(dir / "no/such/directory", "x"), WriteState::Failed);
}

}  // namespace
