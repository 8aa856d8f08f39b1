#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ml {
namespace {

namespace fs = std::filesystem;

/// From bottom to top: a module may include itself and what stands before it.
constexpr std::array kModules = {"platform",  "settings",   "metadata", "imaging", "imagefiles", "rawconvert",
                                 "catalogue", "publishing", "batch",    "options", "cli",        "app"};
/// publishing and batch, cli and app stand side by side.
constexpr std::array<std::array<const char*, 2>, 2> kNeighbours = {{{"publishing", "batch"}, {"cli", "app"}}};

struct Include {
  std::string file, header;
  bool quoted = false;
};

int Rank(const std::string& module) {
  const auto found = std::ranges::find(kModules, module);
  return found == kModules.end() ? -1 : static_cast<int>(found - kModules.begin());
}

std::vector<Include> AllIncludes() {
  static const std::regex pattern(R"re(^\s*#\s*include\s*([<"])([^>"]+)[>"])re");
  const fs::path src = fs::path(ML_SOURCE_DIR) / "src";
  std::vector<Include> result;
  for (const auto& entry : fs::recursive_directory_iterator(src)) {
    const auto extension = entry.path().extension();
    if (extension != ".h" && extension != ".cpp") continue;
    std::istringstream lines(test::ReadAll(entry.path().string()).value_or(""));
    for (std::string line; std::getline(lines, line);) {
      std::smatch match;
      if (std::regex_search(line, match, pattern)) {
        result.push_back({fs::relative(entry.path(), src).string(), match[2], match[1] == "\""});
      }
    }
  }
  return result;
}

std::string ModuleOf(const std::string& path) { return path.substr(0, path.find('/')); }

bool AreNeighbours(const std::string& a, const std::string& b) {
  return std::ranges::any_of(
      kNeighbours, [&](const auto& pair) { return (a == pair[0] && b == pair[1]) || (a == pair[1] && b == pair[0]); });
}

TEST(Includes, RunDownwardsOnly) {
  const auto includes = AllIncludes();
  ASSERT_GT(includes.size(), 50U) << "the sources were not found";
  for (const auto& include : includes) {
    if (!include.quoted) continue;
    const auto from = ModuleOf(include.file);
    const auto to = ModuleOf(include.header);
    EXPECT_GE(Rank(from), 0) << include.file << " lies in no known module";
    EXPECT_GE(Rank(to), 0) << include.file << " includes \"" << include.header << "\" without its module";
    EXPECT_LE(Rank(to), Rank(from)) << include.file << " includes upwards: " << include.header;
    EXPECT_FALSE(AreNeighbours(from, to)) << include.file << " includes sideways: " << include.header;
    if (to == "settings") {
      EXPECT_TRUE(from == "settings" || from == "options" || from == "app" || from == "cli")
          << include.file << ": an engine takes small structs, not the store";
    }
  }
}

TEST(Includes, QtStaysInWidgetsAndProgram) {
  static const std::regex qt(R"(^Q[A-Z]\w*$|^Qt\w+/)");
  for (const auto& include : AllIncludes()) {
    if (include.quoted || !std::regex_search(include.header, qt)) continue;
    const bool allowed = include.file.starts_with("app/") || include.file.find("/ui/") != std::string::npos;
    EXPECT_TRUE(allowed && !include.file.starts_with("app/startup/")) << include.file << " includes " << include.header;
  }
}

TEST(Includes, WidgetsAreNotReachedFromEngines) {
  for (const auto& include : AllIncludes()) {
    if (include.header.find("/ui/") == std::string::npos) continue;
    EXPECT_TRUE(include.file.starts_with("app/") || include.file.find("/ui/") != std::string::npos)
        << include.file << " includes " << include.header;
  }
}

TEST(Includes, EachSourceBeginsWithItsOwnHeader) {
  const fs::path src = fs::path(ML_SOURCE_DIR) / "src";
  const auto includes = AllIncludes();
  std::string last;
  for (const auto& include : includes) {
    if (include.file == last || !include.file.ends_with(".cpp")) continue;
    last = include.file;
    const auto own = fs::path(include.file).replace_extension(".h");
    if (fs::exists(src / own)) {
      EXPECT_EQ(include.header, own.string()) << include.file << " does not include its own header first";
    }
  }
}

/// Where the headers of a library may be included; everything behind it works with our own types.
TEST(Includes, ThirdPartyHeadersStayInTheirFolder) {
  struct Home {
    const char *header, *folder, *second = nullptr;
  };
  constexpr std::array kHomes = {Home{"jpeglib.h", "imaging/jpeg/"},
                                 Home{"turbojpeg.h", "imaging/jpeg/"},
                                 Home{"png.h", "imaging/png/"},
                                 Home{"toml++/", "settings/"},
                                 Home{"CLI/", "cli/"},
                                 Home{"nlohmann/", "cli/"},
                                 Home{"magick/", "imaging/magick/"},
                                 Home{"libraw/", "rawconvert/", "imaging/raw/"},
                                 Home{"glib.h", "platform/"},
                                 Home{"gio/", "platform/"},
                                 Home{"lcms2.h", "imaging/"},
                                 Home{"openjpeg.h", "imaging/jp2/"}};
  for (const auto& include : AllIncludes()) {
    for (const auto& home : kHomes) {
      if (include.quoted || !include.header.starts_with(home.header)) continue;
      const bool atHome =
          include.file.starts_with(home.folder) || (home.second != nullptr && include.file.starts_with(home.second));
      EXPECT_TRUE(atHome) << include.file << " includes <" << include.header << ">";
      EXPECT_TRUE(include.file.ends_with(".cpp") || include.header.ends_with("_fwd.hpp"))
          << include.file << " passes <" << include.header << "> on";
    }
  }
}

}  // namespace
}  // namespace ml
