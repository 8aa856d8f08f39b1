#include "platform/in_place_patch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string_view>

#include "platform/errors.h"
#include "platform/file_status.h"
#include "support/byte_string.h"
#include "support/fault_sweep.h"
#include "support/temp_dir.h"

namespace ml::platform {
namespace {

using test::BytesOf;
using test::Outcome;
using test::ReadAll;

Patch MakePatch(std::uint64_t offset, std::string_view from, std::string_view to) {
  return {.offset = offset, .oldBytes = BytesOf(from), .newBytes = BytesOf(to)};
}

struct PatchCase {
  const char* name;
  std::string before;
  std::vector<Patch> patches;
  std::string appended, after;
};
std::ostream& operator<<(std::ostream& out, const PatchCase& c) { return out << c.name; }

const std::string kLong(70'000, '.');

class PatchSweep : public testing::TestWithParam<PatchCase> {};

TEST_P(PatchSweep, LeavesAFileThatReadsAsTheOldOrTheNewOne) {
  const auto& c = GetParam();
  const test::TempDir dir;
  const auto path = dir / "a.nef";
  const auto prepare = [&] { dir.Write("a.nef", c.before); };
  const auto act = [&](FileSystem& fileSystem) {
    ApplyPatches(path, {.fileSize = c.before.size(), .patches = c.patches, .appended = BytesOf(c.appended)},
                 {.stateDirectory = dir / "state", .fileSystem = &fileSystem});
  };
  const auto verify = [&](Outcome outcome) {
    const auto content = ReadAll(path).value();
    if (content == c.after) return;
    EXPECT_NE(outcome, Outcome::Done);
    EXPECT_EQ(content.substr(0, c.before.size()), c.before);
    if (outcome == Outcome::Refused) {
      EXPECT_EQ(content.size(), c.before.size());
    }
  };
  for (const auto fault : test::kFaults) EXPECT_GT(test::SweepFaults(fault, prepare, act, verify), 5);
}

INSTANTIATE_TEST_SUITE_P(
    Sets, PatchSweep,
    testing::Values(
        PatchCase{"OneByte", "0123456789", {MakePatch(3, "3", "x")}, "", "012x456789"},
        PatchCase{
            "SeveralOutOfOrder", "0123456789", {MakePatch(7, "78", "y8"), MakePatch(1, "12", "1x")}, "", "01x3456y89"},
        PatchCase{"AppendThenPoint", "0123456789", {MakePatch(0, "01", "AB")}, "tail", "AB23456789tail"},
        PatchCase{"OnlyAppend", "0123", {}, "tail", "0123tail"},
        PatchCase{"AcrossTheBorderOfPages",
                  kLong,
                  {MakePatch(4094, "....", "0123")},
                  "",
                  std::string(kLong).replace(4094, 4, "0123")},
        PatchCase{"TooWideForOneWrite",
                  "<" + kLong + ">",
                  {MakePatch(0, "<", "["), MakePatch(70'001, ">", "]")},
                  "tail",
                  "[" + kLong + "]tail"}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(InPlacePatch, RefusesAFileThatIsNotTheOneItWasMadeFor) {
  const test::TempDir dir;
  const auto path = dir.Write("a", "0123456789");
  const auto identity = IdentityOf(path);
  SetModificationTime(path, identity->modified + 1);
  const PatchSet sets[] = {{.fileSize = 11, .patches = {MakePatch(0, "0", "x")}},
                           {.fileSize = 10, .patches = {MakePatch(0, "0", "x"), MakePatch(5, "y", "z")}},
                           {.fileSize = 10, .patches = {MakePatch(0, "0", "x")}, .read = identity}};
  for (const auto& set : sets) EXPECT_THROW(ApplyPatches(path, set), UserError);
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  EXPECT_THROW(ApplyPatches(path, {.fileSize = 10, .patches = {MakePatch(0, "0", "x")}}), UserError);
  EXPECT_EQ(ReadAll(path), "0123456789");
}

TEST(InPlacePatch, KeepsTheInodeForSmallEditsAndTheTimeForNone) {
  const test::TempDir dir;
  const auto path = dir.Write("a", "0123456789");
  const auto before = IdentityOf(path);
  ApplyPatches(path, {.fileSize = 10, .patches = {MakePatch(0, "01", "01")}});
  EXPECT_EQ(IdentityOf(path), before);
  ApplyPatches(path, {.fileSize = 10, .patches = {MakePatch(0, "0", "x")}});
  EXPECT_EQ(IdentityOf(path)->inode, before->inode);
}

}  // namespace
}  // namespace ml::platform
