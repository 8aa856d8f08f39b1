#include "app/startup/start_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_dir.h"

namespace ml::app {
namespace {

using Names = std::vector<std::string>;

class StartFilesTest : public testing::Test {
 protected:
  Names Files(const Names& names, bool bind = true) const {
    Names paths;
    for (const auto& name : names) paths.push_back(dir / name);
    Names shown;
    for (const auto& file : CollectStartFiles(paths, bind).files) shown.push_back(file.substr(dir.Path().size() + 1));
    return shown;
  }
  /// A TIFF of 1 MiB whose first directory says 192 rows.
  static std::string Eos1DRaw() {
    const char head[] = {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 1, 1, 3, 0, 1, 0, 0, 0, '\xC0', 0, 0, 0, 0, 0, 0, 0};
    std::string bytes(head, sizeof head);
    bytes.resize(1'048'576);
    return bytes;
  }
  test::TempDir dir;
};

TEST_F(StartFilesTest, TakesEachExistingImageOnce) {
  for (const auto* name : {"a.jpg", "b c.PNG", "n.nef", "v.avi", "t.txt", "A.jpg"}) dir.Write(name, "x");
  ASSERT_EQ(::mkfifo((dir / "p.jpg").c_str(), 0600), 0);
  EXPECT_EQ(Files({"b c.PNG", "a.jpg", "gone.jpg", "n.nef", "v.avi", "t.txt", "p.jpg", "A.jpg", "a.jpg"}),
            (Names{"b c.PNG", "a.jpg", "A.jpg"}));
  const Names gone{dir / "gone.jpg"};
  EXPECT_EQ(CollectStartFiles(gone, true).missing, gone);
}

TEST_F(StartFilesTest, DirectoryEndsTheScan) {
  dir.Write("a.jpg", "x");
  dir.Write("sub/b.jpg", "x");
  const Names tokens{dir / "a.jpg", dir / "sub/", dir / "sub/b.jpg"};
  const auto start = CollectStartFiles(tokens, true);
  EXPECT_EQ(start.directory, dir / "sub");
  EXPECT_TRUE(start.files.empty());
}

TEST_F(StartFilesTest, CompanionsStandForTheirRawFiles) {
  for (const auto* name : {"A.THM", "A.CRW", "lonely.thm", "small.jpg", "small.tif"}) dir.Write(name, "x");
  dir.Write("raw.jpg", "x");
  dir.Write("raw.TIF", Eos1DRaw());
  EXPECT_EQ(Files({"A.THM", "lonely.thm", "small.jpg", "raw.jpg", "A.CRW"}), (Names{"A.CRW", "small.jpg", "raw.TIF"}));
  EXPECT_EQ(Files({"raw.jpg"}, false), (Names{"raw.jpg"}));
}

TEST_F(StartFilesTest, TakesThousandsOfNames) {
  // A step that compared all with all, or read the directory for each name, would take minutes here.
  Names names;
  for (int i = 0; i < 20'000; ++i) names.push_back("IMG_" + std::to_string(i) + ".JPG");
  for (const auto& name : names) dir.Write(name, "");
  EXPECT_EQ(Files(names), names);
}

}  // namespace
}  // namespace ml::app
