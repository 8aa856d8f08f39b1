#include "platform/start_program.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

TEST(StartProgram, HandsWordsOverAsTheyStand) {
  const test::TempDir dir;
  const auto out = dir / "out $HOME;'\"\xe9";
  StartProgram(
      {"sh", "-c", "printf '%s|' \"$@\" > \"$0.part\" && mv \"$0.part\" \"$0\"", out, "a b", "$(id)", "caf\xe9"});
  for (int i = 0; i < 500 && !test::ReadAll(out); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(test::ReadAll(out), "a b|$(id)|caf\xe9|");
}

TEST(StartProgram, TellsWhyNot) {
  const test::TempDir dir;
  const auto failure = [](const std::vector<std::string>& command) {
    try {
      StartProgram(command);
    } catch (const StartError& error) {
      return error.Failure();
    }
    return StartFailure::Other;
  };
  EXPECT_EQ(failure({dir / "missing"}), StartFailure::NotFound);
  EXPECT_EQ(failure({dir.Write("text", "no program")}), StartFailure::NotExecutable);
  EXPECT_EQ(failure({"sh", std::string(4'000'000, 'x')}), StartFailure::TooManyArguments);
}

TEST(StartProgram, SplitsTypedLines) {
  const test::TempDir dir;
  const auto blank = dir.Write("my editor", "#!/bin/sh\n");
  ASSERT_EQ(::chmod(blank.c_str(), 0755), 0);
  using Words = std::vector<std::string>;
  const std::pair<std::string, Words> kCases[] = {
      {" sh  -c  x ", {"sh", "-c", "x"}},
      {"no-such-program -n", {"no-such-program", "-n"}},
      {blank, {blank}},
      {"\"" + blank + "\" -a  b", {blank, "-a", "b"}},
      {"/opt/My Editor.EXE /new", {"/opt/My Editor.EXE", "/new"}},
      {"\"abc\"", {"abc"}},
  };
  for (const auto& [line, words] : kCases) EXPECT_EQ(SplitProgramLine(line), words) << line;
  for (const std::string line : {"\"gimp -n", "\"ab\" c"}) {
    EXPECT_EQ(test::Refusal([&] { SplitProgramLine(line); }), "Invalid command line - no closing quotes:\n" + line);
  }
}

}  // namespace
}  // namespace ml::platform
