#include "platform/help_page.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <thread>

#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

namespace fs = std::filesystem;

const fs::path kFolder = fs::path(ML_SOURCE_DIR) / "docs/help";

std::vector<std::string> AllOf(const std::string& text, const std::regex& pattern) {
  std::vector<std::string> found;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) found.push_back((*at)[1]);
  return found;
}

TEST(HelpPages, EveryLinkLeadsSomewhere) {
  const std::regex anchor(" id=\"([^\"]*)\""), link(" (?:href|src)=\"([^\"]*)\"");
  std::map<std::string, std::set<std::string>> anchors;
  std::map<std::string, std::vector<std::string>> links;
  for (const auto& entry : fs::directory_iterator(kFolder)) {
    const auto name = entry.path().filename().string();
    const auto text = test::ReadAll(entry.path().string()).value();
    links[name] = AllOf(text, link);
    for (const auto& id : AllOf(text, anchor)) {
      EXPECT_TRUE(anchors[name].insert(id).second) << name << " has two places called " << id;
    }
  }
  std::set<std::string> reached;
  for (const auto& [page, targets] : links) {
    for (const auto& target : targets) {
      const auto hash = std::min(target.find('#'), target.size());
      const auto file = hash == 0 ? page : target.substr(0, hash);
      EXPECT_TRUE(links.contains(file)) << page << " leads to " << target;
      if (hash < target.size()) {
        EXPECT_TRUE(anchors[file].contains(target.substr(hash + 1))) << page << " leads to " << target;
      }
      if (page != file) reached.insert(file);
    }
  }
  EXPECT_EQ(reached.size(), links.size()) << "a page to which no other leads";
  for (const auto page : kHelpPages) EXPECT_TRUE(links.contains(HelpFileName(page))) << HelpFileName(page);
}

class Environment {
 public:
  Environment(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    ::setenv(name, value.c_str(), 1);
  }
  ~Environment() { old_ ? ::setenv(name_, old_->c_str(), 1) : ::unsetenv(name_); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(HelpPages, OpenByTheDesktopOrAreToldMissing) {
  const test::TempDir dir;
  const Environment data("MARROWLANTERN_DATA", dir / "data dir");
  const auto page = dir / "data dir/help/iptc.htm";
  EXPECT_EQ(test::Refusal([] { OpenHelpPage(HelpPage::Iptc); }), "Unable to find HTML help file:\n" + page);
  dir.Write("data dir/help/iptc.htm", "<html>");
  const auto browser =
      dir.Write("xdg-open", "#!/bin/sh\nprintf '%s|' \"$@\" > \"$0.part\" && mv \"$0.part\" \"$0.told\"\n");
  fs::permissions(browser, fs::perms::owner_all);
  const Environment path("PATH", dir.Path() + ":" + std::getenv("PATH"));
  OpenHelpPage(HelpPage::Iptc);
  const auto told = browser + ".told";
  for (int i = 0; i < 500 && !test::ReadAll(told); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(test::ReadAll(told), page + "|");
}

}  // namespace
}  // namespace ml::platform
