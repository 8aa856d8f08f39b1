#include "platform/trash.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <set>

#include "platform/errors.h"
#include "support/child_process.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

TEST(SystemTrash, TellsWhereEachOfTwoFilesOfOneNameLies) {
  const test::TempDir dir;
  // In a process of its own: the library asks for the home only once.
  EXPECT_EQ(test::RunInChild([&] {
              ::setenv("HOME", dir.Path().c_str(), 1);
              ::setenv("XDG_DATA_HOME", (dir / "share").c_str(), 1);
              std::filesystem::create_directories(dir / "share");
              const auto trash = MakeSystemTrash();
              const auto path = dir.Write("images/50% gr\xc3\xbcn.x.jpg", "first");
              trash->Put(path);
              dir.Write("images/50% gr\xc3\xbcn.x.jpg", "second");
              trash->Put(path);
              std::set<std::optional<std::string>> contents;
              for (const auto& file : trash->Find(path)) {
                if (std::filesystem::exists(file.info)) contents.insert(test::ReadAll(file.file));
              }
              return contents.size() == 2 && contents.contains("first") && contents.contains("second") &&
                             !std::filesystem::exists(path)
                         ? 0
                         : 1;
            }),
            0);
}

TEST(SystemTrash, NeverDeletesWhatItCannotKeep) {
  const test::TempDir dir;
  const auto path = dir.Write("images/a.jpg", "x");
  EXPECT_EQ(test::RunInChild([&] {
              const auto blocked = dir.Write("share", "a file where the trash would be");
              ::setenv("HOME", dir.Path().c_str(), 1);
              ::setenv("XDG_DATA_HOME", blocked.c_str(), 1);
              try {
                MakeSystemTrash()->Put(path);
              } catch (const UserError& error) {
                return std::string_view(error.what()).find(path) != std::string_view::npos ? 0 : 2;
              }
              return 1;
            }),
            0);
  EXPECT_EQ(test::ReadAll(path), "x");
}

}  // namespace
}  // namespace ml::platform
