#include "catalogue/sort.h"

#include <gtest/gtest.h>

#include <map>

#include "catalogue/image_directory.h"

namespace {

using namespace ml::catalogue;
using ml::test::FileNames;
using ml::test::Names;

struct SortCase {
  const char* what;
  SortMethod method;
  Names given, ascending, reversed;
};

TEST(SortList, OrdersByMethodAndDirection) {
  using enum SortMethod;
  const SortCase cases[] = {
      {"files without a number stand last, in reverse first",
       Numeric,
       {"y.jpg", "x10.jpg", "z.jpg", "x9.jpg"},
       {"x9.jpg", "x10.jpg", "y.jpg", "z.jpg"},
       {"z.jpg", "y.jpg", "x10.jpg", "x9.jpg"}},
      {"equal numbers go by path",
       Numeric,
       {"2.jpg", "002.jpg", "b2.jpg"},
       {"002.jpg", "2.jpg", "b2.jpg"},
       {"b2.jpg", "2.jpg", "002.jpg"}},
      {"the first run of digits, of the stem alone",
       Numeric,
       {"a1b9.jpg", "2003-01.jpg", "IMG_0042.jpg", "a.jp2"},
       {"a1b9.jpg", "IMG_0042.jpg", "2003-01.jpg", "a.jp2"},
       {"a.jp2", "2003-01.jpg", "IMG_0042.jpg", "a1b9.jpg"}},
      {"numbers above 31 bits are equal",
       Numeric,
       {"z2147483647.jpg", "b99999999999999999999.jpg", "c2147483648.jpg", "a2147483646.jpg"},
       {"a2147483646.jpg", "b99999999999999999999.jpg", "c2147483648.jpg", "z2147483647.jpg"},
       {"z2147483647.jpg", "c2147483648.jpg", "b99999999999999999999.jpg", "a2147483646.jpg"}},
      {"case is ignored, bytes decide ties",
       Alphabetical,
       {"b.jpg", "a.jpg", "A.jpg", "_.jpg"},
       {"_.jpg", "A.jpg", "a.jpg", "b.jpg"},
       {"b.jpg", "a.jpg", "A.jpg", "_.jpg"}},
      {"file types by rank, then path",
       FileType,
       {"f.tif", "e.pef", "e.raf", "d.psd", "c.jpeg", "c.JPE", "c.jpg", "b.crw", "z.avi", "a.tiff", "d.png"},
       {"z.avi", "b.crw", "c.jpg", "c.JPE", "c.jpeg", "d.png", "d.psd", "e.pef", "e.raf", "a.tiff", "f.tif"},
       {"f.tif", "a.tiff", "e.raf", "e.pef", "d.psd", "d.png", "c.jpeg", "c.JPE", "c.jpg", "b.crw", "z.avi"}},
      {"custom order is left alone", Custom, {"b.jpg", "a.jpg"}, {"b.jpg", "a.jpg"}, {"b.jpg", "a.jpg"}},
  };
  for (const auto& c : cases) {
    for (const bool reverse : {false, true}) {
      Names list;
      for (const auto& name : c.given) list.push_back("/pictures/" + name);
      SortList(list, c.method, reverse);
      EXPECT_EQ(FileNames(list), reverse ? c.reversed : c.ascending) << c.what;
    }
  }
}

TEST(SortList, AsksForTheTimeOfTheCompanionWhereThereIsOne) {
  const ml::test::ImageDirectory dir({"a.crw", "A.THM", "b.avi", "c.jpg", "c.thm", "d.jpg", "e.nef"});
  const std::map<std::string, std::int64_t> times = {{"a.crw", 9}, {"A.THM", 1},  {"b.avi", 5}, {"c.jpg", 3},
                                                     {"c.thm", 8}, {"d.jpg", -1}, {"e.nef", 3}};
  auto list = dir.Paths({"b.avi", "e.nef", "d.jpg", "c.jpg", "a.crw"});
  SortList(list, SortMethod::Timestamp, false,
           [&](const std::string& path) { return times.at(std::string(ml::platform::FileName(path))); });
  EXPECT_EQ(FileNames(list), (Names{"a.crw", "c.jpg", "e.nef", "b.avi", "d.jpg"}));
}

TEST(SortList, TakesTheTimeOfTheFilesThemselves) {
  const ml::test::ImageDirectory dir({"a.jpg", "b.jpg"});
  const auto now = std::filesystem::last_write_time(dir / "b.jpg");
  std::filesystem::last_write_time(dir / "a.jpg", now + std::chrono::hours(1));
  auto list = dir.Paths({"a.jpg", "b.jpg", "missing.jpg"});
  SortList(list, SortMethod::Timestamp, false);
  EXPECT_EQ(FileNames(list), (Names{"b.jpg", "a.jpg", "missing.jpg"}));
}

}  // namespace
