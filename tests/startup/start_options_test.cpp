#include "app/startup/start_options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace ml::app {
namespace {

using Texts = std::vector<std::string>;

bool Nowhere(const std::string&) { return false; }

TEST(ScanCommandLine, TakesTheOptionsInFront) {
  struct Case {
    const char* line;
    int cpu;
    const char *script, *rest;
  };
  for (const auto& c : {
           Case{"", -1, "", ""},
           Case{" \t ", -1, "", ""},
           Case{"a.jpg", -1, "", "a.jpg"},
           Case{"-a", 0, "", ""},
           Case{"-a ", 0, "", ""},
           Case{"/A2", 2, "", ""},
           Case{"-a2 a.jpg", 2, "", "a.jpg"},
           Case{"\t-a31\tx", 31, "", "x"},
           Case{"-a007 x", 7, "", "x"},
           Case{"-a2x.jpg", 2, "", "x.jpg"},
           Case{"-a1-a2 x", 2, "", "x"},
           Case{"-s run.txt x y", -1, "run.txt", "x y"},
           Case{"/Srun.txt x", -1, "run.txt", "x"},
           Case{"-s \t run.txt", -1, "run.txt", ""},
           Case{"-s -a1", -1, "-a1", ""},
           Case{"-s", -1, "", ""},
           Case{"-s run.txt -a3 x -a4", 3, "run.txt", "x -a4"},
           Case{"-s run\nx", -1, "run", "\nx"},
           Case{"x -a1", -1, "", "x -a1"},
           Case{"\n-a1", -1, "", "\n-a1"},
       }) {
    const auto line = ScanCommandLine(c.line);
    EXPECT_FALSE(line.options.usageRequested) << c.line;
    EXPECT_EQ(line.options.cpuPreference, c.cpu) << c.line;
    EXPECT_EQ(line.options.scriptPath, c.script) << c.line;
    EXPECT_EQ(line.rest, c.rest) << c.line;
  }
}

TEST(ScanCommandLine, AsksForTheUsageBox) {
  for (const char* line : {"-a32", "-a31 /tmp", "/a99999999999999999999", "-", "/", "-a -", "- a", "-x", "/tmp",
                           "--help", "-a1 -b", "-s run /q", "-\t"}) {
    EXPECT_TRUE(ScanCommandLine(line).options.usageRequested) << line;
  }
}

TEST(ScanTokens, DividesAtBlanksAndQuotes) {
  struct Case {
    const char* rest;
    Texts tokens;
  };
  for (const auto& c : {
           Case{"", {}},
           Case{"  a.jpg  b.jpg ", {"a.jpg", "b.jpg"}},
           Case{"\"/shots/a b.crw\" c.jpg", {"/shots/a b.crw", "c.jpg"}},
           Case{"\"a\"b", {"a", "b"}},
           Case{"a\"b c\"", {"a\"b", "c\""}},
           Case{"\"unterminated one", {}},
           Case{"a \"unterminated b", {"a"}},
           Case{"a \"\" b", {"a"}},
           Case{"a\tb\n", {"a\tb"}},
       }) {
    EXPECT_EQ(ScanTokens(c.rest), c.tokens) << c.rest;
  }
}

TEST(ScanArguments, TakesTheOptionsInFront) {
  struct Case {
    std::vector<const char*> arguments;
    int cpu;
    const char* script;
    Texts tokens;
  };
  for (const auto& c : {
           Case{{}, -1, "", {}},
           Case{{"/x/a b.jpg", "/x/\"q\".jpg"}, -1, "", {"/x/a b.jpg", "/x/\"q\".jpg"}},
           Case{{"-a"}, 0, "", {}},
           Case{{"-A3", "/x"}, 3, "", {"/x"}},
           Case{{"/a5", "/x"}, 5, "", {"/x"}},
           Case{{"/A", "/S", "run me", "/x"}, 0, "run me", {"/x"}},
           Case{{"-s", "-a1", "/x"}, -1, "-a1", {"/x"}},
           Case{{"-srun me", "-a1"}, 1, "run me", {}},
           Case{{"-s"}, -1, "", {}},
           Case{{"/"}, -1, "", {"/"}},
           Case{{"/a.jpg"}, -1, "", {"/a.jpg"}},
           Case{{"/a1b", "/srv", "/sx"}, -1, "", {"/a1b", "/srv", "/sx"}},
           Case{{"/x", "-a1", "/a2"}, -1, "", {"/x", "/here/-a1", "/a2"}},
       }) {
    const auto result = ScanArguments(c.arguments, Nowhere);
    const auto first = c.arguments.empty() ? "nothing" : c.arguments.front();
    EXPECT_FALSE(result.options.usageRequested) << first;
    EXPECT_EQ(result.options.cpuPreference, c.cpu) << first;
    EXPECT_EQ(result.options.scriptPath, c.script) << first;
    auto expected = c.tokens;
    for (auto& token : expected) {
      if (token.starts_with("/here/")) token = std::filesystem::current_path().string() + token.substr(5);
    }
    EXPECT_EQ(result.tokens, expected) << first;
  }
}

TEST(ScanArguments, TakesASlashForAPathWhereItIsOne) {
  const std::set<std::string> files{"/a", "/a32", "/s"};
  const auto exists = [&](const std::string& path) { return files.contains(path); };
  for (const char* path : {"/a", "/a32", "/s"}) {
    const auto result = ScanArguments(std::vector{path, "/next"}, exists);
    EXPECT_FALSE(result.options.usageRequested) << path;
    EXPECT_EQ(result.options.cpuPreference, -1) << path;
    EXPECT_EQ(result.tokens, (Texts{path, "/next"}));
  }
}

TEST(ScanArguments, AsksForTheUsageBox) {
  for (const char* argument : {"-a32", "/a32", "-a1x", "-a-1", "-a99999999999", "-", "--", "--help", "-x"}) {
    EXPECT_TRUE(ScanArguments(std::vector{argument, "/x"}, Nowhere).options.usageRequested) << argument;
  }
}

TEST(CheckScript, TellsOfAMissingFileOnly) {
  StartOptions missing{.scriptPath = "/no/script"};
  const auto box = CheckScript(missing, Nowhere);
  ASSERT_TRUE(box);
  EXPECT_EQ(box->text, "Script file not found:\n/no/script");
  EXPECT_EQ(missing.scriptPath, "");
  StartOptions there{.scriptPath = "/script"}, none;
  EXPECT_FALSE(CheckScript(there, [](const std::string&) { return true; }));
  EXPECT_EQ(there.scriptPath, "/script");
  EXPECT_FALSE(CheckScript(none, Nowhere));
}

}  // namespace
}  // namespace ml::app
