#include "platform/start_program.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/errors.h"
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
  EXPECT_THROW(StartProgram({dir / "missing"}), UserError);
}

}  // namespace
}  // namespace ml::platform
