#include "metadata/ciff.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "metadata/crw_file.h"
#include "support/ciff_builder.h"
#include "support/refusal.h"

namespace ml::metadata {
namespace {

using test::CiffBuilder;
using test::Endian;

constexpr int kProperties = 0x300a;
const test::CameraRaw kCamera{.width = 64, .height = 48, .previewWidth = 32, .previewHeight = 24, .orientation = 6};

std::string FileWith(const CiffBuilder& properties) {
  return CiffBuilder().Heap(kProperties, properties).BuildFile(Endian::Little);
}
CrwBasics Basics(const std::string& file) { return ReadCrwBasics(SourceOf(file)); }
class CrwOrder : public testing::TestWithParam<Endian> {};
TEST_P(CrwOrder, ValuesComeFromTheHeaps) {
  const auto file = test::CrwHeap(kCamera).BuildFile(GetParam());
  const auto basics = Basics(file);
  EXPECT_EQ(basics.rotation, 90);
  EXPECT_EQ(basics.fileNumber, 1000123U);
  ASSERT_TRUE(basics.time);
  EXPECT_EQ(basics.time->seconds, 1053166272U);  // 2003-05-17 10:11:12
  const auto source = SourceOf(file);
  EXPECT_EQ(source.ReadNumber(basics.time->position, 4, basics.order), 1053166272U);
  EXPECT_EQ(source.ReadNumber(basics.rotationPosition, 4, basics.order), 90U);
  const auto settings = ReadCrwSettings(source);
  EXPECT_EQ(settings.stitchShot, 4);
  EXPECT_EQ(settings.colorTemperature, 5200);
  EXPECT_EQ(settings.colorSpace, 1);
  EXPECT_EQ(settings.whiteBalance, 9);
}
INSTANTIATE_TEST_SUITE_P(Both, CrwOrder, testing::Values(Endian::Little, Endian::Big));

TEST(CrwBasicsTest, RefusalsNameTheReason) {
  CiffBuilder twenty, twentyOne;
  for (int i = 0; i < 20; ++i) twenty.Data(0x0800 + i, "x");
  twentyOne = twenty;
  twentyOne.Data(0x0820, "x");
  auto behind = FileWith(CiffBuilder().Data(0x0805, "x"));
  const auto entry = behind.find(std::string("\x0a\x30", 2));
  behind.replace(entry + 6, 4, "\xff\xff\xff\x7f");
  auto tooLong = FileWith(CiffBuilder().Data(0x0805, "x"));
  tooLong.replace(entry + 2, 4, "\xff\xff\xff\x7f");
  const std::pair<std::string, std::string> cases[] = {
      {"", "End of file reached reading header"},
      {std::string("II\x1a\0\0\0", 6) + std::string(19, 'x'), "End of file reached reading header"},
      {"XX" + std::string(30, '\0'), "Invalid alignment - expecting 'II' or 'MM'"},
      {twenty.BuildFile(Endian::Little), ""},
      {twentyOne.BuildFile(Endian::Little), "numEntries > 20"},
      {FileWith(twentyOne), "numEntries > 20"},
      {behind, "fseek() error extracting picture info"},
      {tooLong, "End of file reached trying to read picture data"},
  };
  for (const auto& [file, sentence] : cases) EXPECT_EQ(test::Refusal([&] { Basics(file); }), sentence);
}

TEST(CrwBasicsTest, ShortRecordsLeaveTheirValueEmpty) {
  const auto basics = Basics(FileWith(CiffBuilder().Data(0x1810, std::string(15, '\1')).Data(0x180e, "abc")));
  EXPECT_FALSE(basics.rotation);
  EXPECT_FALSE(basics.time);
  EXPECT_FALSE(basics.fileNumber);
}

TEST(CrwPreview, StandsInTheRoot) {
  const auto file = test::CrwHeap(kCamera).BuildFile(Endian::Little);
  const auto range = FindCrwPreview(SourceOf(file));
  ASSERT_TRUE(range);
  EXPECT_EQ(file.substr(range->position, range->size), test::RawPreview(kCamera));
  const auto inside = FileWith(CiffBuilder().Data(0x2007, "in a heap"));
  EXPECT_FALSE(FindCrwPreview(SourceOf(inside)));
}

TEST(CrwPreview, NumbersAreLittleEndianWhateverTheHeaderSays) {
  auto file = test::CrwHeap(kCamera).BuildFile(Endian::Little);
  file.replace(0, 2, "MM");
  EXPECT_TRUE(FindCrwPreview(SourceOf(file)));
  const auto big = test::CrwHeap(kCamera).BuildFile(Endian::Big);
  EXPECT_FALSE(FindCrwPreview(SourceOf(big)));
}

TEST(CrwPreview, RangeIsCutToTheFile) {
  for (const auto& [size, offset, found] : {std::tuple{0xffffffffU, 0U, true}, {10U, 0xfffffff0U, false}}) {
    const auto file = CiffBuilder().Entry(0x2007, size, offset).BuildFile(Endian::Little);
    const auto range = FindCrwPreview(SourceOf(file));
    ASSERT_EQ(range.has_value(), found);
    if (range) {
      EXPECT_EQ(range->End(), file.size());
    }
  }
}

TEST(CiffRecordsTest, HeapsAreWalkedInOrderAndToTheirDepth) {
  CiffBuilder heap;
  heap.Data(0x0800, "deep");
  for (int level = 0; level < 9; ++level) heap = CiffBuilder().Heap(0x2801 + level, heap).Data(0x0801, "x");
  const auto file = heap.BuildFile(Endian::Little);
  const auto records = ReadCiffRecords(SourceOf(file));
  EXPECT_EQ(FindCiffTag(records, 0x0800), nullptr);  // in the tenth
  EXPECT_EQ(records.size(), 8U);
  EXPECT_EQ(records.front().heap, 0x2803);
  EXPECT_EQ(records.back().heap, 0);
}

TEST(CiffRecordsTest, HeapsThatHoldThemselvesEnd) {
  const auto heap = CiffBuilder().Data(0x0800, "x");
  const auto size = static_cast<std::uint32_t>(CiffBuilder(heap).Entry(0x2801, 0, 0).Build(Endian::Little).size());
  const auto inner = CiffBuilder(heap).Entry(0x2801, size, 0);
  const auto file = CiffBuilder().Heap(0x2803, inner).BuildFile(Endian::Little);
  EXPECT_EQ(ReadCiffRecords(SourceOf(file)).size(), 1U);
}

TEST(CiffRecordsTest, OnlySomeOfVeryManyHeapsAreWalked) {
  CiffBuilder many;
  for (int i = 0; i < 80; ++i) many.Heap(0x2801, CiffBuilder().Data(0x0800, "x"));
  const auto file = CiffBuilder().Heap(0x2803, many).BuildFile(Endian::Little);
  EXPECT_EQ(ReadCiffRecords(SourceOf(file)).size(), 63U);
}

}  // namespace
}  // namespace ml::metadata
