#include "app/startup/affinity.h"

#include <gtest/gtest.h>

namespace ml::app {
namespace {

TEST(ChooseProcessor, FollowsWishAndMask) {
  struct Case {
    const char* name;
    int preference;
    std::uint64_t mask;
    ProcessorStep step;
    int cpu;
  };
  for (const auto& c : {
           Case{"no wish, first allowed", -1, 0b11, ProcessorStep::Pin, 0},
           Case{"no wish, processor 0 barred", -1, 0b1100, ProcessorStep::Pin, 2},
           Case{"wish granted", 1, 0b11, ProcessorStep::Pin, 1},
           Case{"wish not allowed falls back to the first", 30, 0b11, ProcessorStep::Pin, 0},
           Case{"wish not allowed, lower ones are looked at", 3, 0b0110, ProcessorStep::Pin, 1},
           Case{"one processor, not the wished one", 1, 0b1, ProcessorStep::AlreadySingle, -1},
           Case{"one processor, the wished one", 2, 0b100, ProcessorStep::AlreadySingle, -1},
           Case{"31 leaves the process alone", 31, 0b11, ProcessorStep::Skip, -1},
           Case{"31 even without a mask", 31, 0, ProcessorStep::Skip, -1},
           Case{"no mask", 0, 0, ProcessorStep::Nothing, -1},
           Case{"30 is the highest wish", 30, 0x60000000, ProcessorStep::Pin, 30},
           Case{"31 is reached without a wish", -1, 0x80000000, ProcessorStep::AlreadySingle, -1},
           Case{"processors above 31 only", 0, 0x300000000, ProcessorStep::Nothing, -1},
           Case{"processor 0 beside one above 31", 0, 0x100000001, ProcessorStep::Pin, 0},
       }) {
    const auto choice = ChooseProcessor(c.preference, c.mask);
    EXPECT_EQ(choice.step, c.step) << c.name;
    EXPECT_EQ(choice.cpu, c.cpu) << c.name;
  }
}

/// What a run with `preference` did on two processors where pinning ends in `error`.
struct Applied {
  explicit Applied(int preference, int error = 0) {
    box = ApplyProcessor(preference, {[] { return std::uint64_t{3}; },
                                      [&](int cpu) {
                                        pinned = cpu;
                                        return error;
                                      }});
  }
  std::optional<platform::MessageBox> box;
  int pinned = -1;
};

TEST(ApplyProcessor, PinsOnlyWhenAsked) {
  const Applied none(-1), first(0), second(1), skipped(31);
  EXPECT_EQ(none.pinned, -1);
  EXPECT_FALSE(none.box);
  EXPECT_EQ(first.pinned, 0);
  EXPECT_EQ(second.pinned, 1);
  EXPECT_FALSE(second.box);
  EXPECT_EQ(skipped.pinned, -1);
  ASSERT_TRUE(skipped.box);
  EXPECT_EQ(skipped.box->text, "Skipping SetProcessAffinityMask()");
}

TEST(ApplyProcessor, WarnsWhenTheSystemRefuses) {
  const Applied refused(1, 22);
  ASSERT_TRUE(refused.box);
  EXPECT_EQ(refused.box->icon, platform::BoxIcon::Warning);
  EXPECT_EQ(
      refused.box->text,
      "Warning: Marrowlantern was unable to set the processor affinity to CPU1.\nPlease set the processor affinity "
      "to one CPU manually otherwise raw file\nconversion may fail.\n\nDebug info: error code: 22, process mask: "
      "0x00000003");
}

TEST(SystemAffinity, RefusesAProcessorThatDoesNotExist) {
  const auto calls = SystemAffinity();
  const auto mask = calls.processMask();
  EXPECT_NE(mask, 0u);
  if ((mask >> 63) == 0) {
    EXPECT_NE(calls.pin(1023), 0);
  }
  EXPECT_EQ(calls.processMask(), mask);
}

}  // namespace
}  // namespace ml::app
