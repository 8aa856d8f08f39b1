#include <gtest/gtest.h>

#include <string>

#include "../memory.h"
#include "metadata/ciff.h"
#include "metadata/crw_file.h"
#include "metadata/edit/ciff_file.h"
#include "metadata/edit/crw_writer.h"
#include "metadata/messages.h"
#include "platform/text.h"
#include "support/ciff_builder.h"
#include "support/refusal.h"

namespace ml::metadata {
namespace {

using test::CameraRaw;
using test::CiffBuilder;
using test::Endian;

const CameraRaw kCamera{.width = 64, .height = 48, .previewWidth = 32, .previewHeight = 24, .orientation = 8};

std::string Bytes(const ByteSource& source, const std::optional<FileRange>& range) {
  return range ? TextOf(source.Read(range->position, static_cast<std::size_t>(range->size))) : "nothing";
}

std::string Comment(const ByteSource& file) {
  for (const auto& record : ReadCiffRecords(file)) {
    if (record.tag == ciff_tag::kDescription) return Bytes(file, FileRange{record.position, record.size});
  }
  return "nothing";
}

TEST(CrwWriter, ChangesNumbersInPlaceInEitherByteOrder) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto before = test::CrwHeap(kCamera).BuildFile(order);
    const auto source = SourceOf(before);
    EditedFile file(source);
    const auto old = ReadCrwBasics(file);
    for (const int expected : {0, 90, 180, 270}) {
      EXPECT_TRUE(TurnCrw(file, 90));
      EXPECT_EQ(ReadCrwBasics(file).rotation, expected);
    }
    EXPECT_TRUE(AdjustCrwTime(file, -3661));
    EXPECT_EQ(ReadCrwBasics(file).time->seconds, old.time->seconds - 3661);
    EXPECT_TRUE(AdjustCrwTime(file, 3661));
    EXPECT_EQ(TextOf(file), before);
    EXPECT_THROW(AdjustCrwTime(file, -5'000'000'000), platform::UserError);
    EXPECT_TRUE(WriteCrwComment(file, "A shot"));
    EXPECT_EQ(Comment(file), "ASCIIA shot" + std::string(256 - 11, ' '));
    EXPECT_TRUE(WriteCrwComment(file, std::string(255, 'x')));
    EXPECT_EQ(Comment(file), "ASCII" + std::string(251, 'x'));
    EXPECT_FALSE(WriteCrwComment(file, std::string(256, 'y')));
    EXPECT_EQ(Comment(file), "ASCII" + std::string(251, 'x'));
    EXPECT_EQ(file.Size(), before.size());
  }
  const auto bare = CiffBuilder().Heap(0x300a, CiffBuilder().Data(0x1234, "data")).BuildFile(Endian::Little);
  const auto source = SourceOf(bare);
  EditedFile file(source);
  EXPECT_FALSE(TurnCrw(file, 90));
  EXPECT_FALSE(AdjustCrwTime(file, 1));
  EXPECT_FALSE(WriteCrwComment(file, "text"));
  EXPECT_FALSE(file.Touched());
}

TEST(CiffFile, WritesAnotherPreviewAndNothingElse) {
  // The raw data behind everything else and a value in its entry: the order of the data is not that of the root.
  auto root = CiffBuilder().Heap(0x300a, test::CrwProperties(kCamera)).Data(0x2007, "an old preview");
  const auto before =
      root.Entry(0x5813, 77, 88).Data(0x2005, "the sensor's data, oddly long").BuildFile(Endian::Little);
  const auto source = SourceOf(before);
  const CiffFile ciff(source);
  for (const std::string preview : {"new", "a new preview, much longer than the old one"}) {
    EditedFile file(source);
    ciff.Write(file, {.preview = platform::AsBytes(preview)});
    const CiffFile written(file);
    EXPECT_EQ(Bytes(file, written.FindEntry(0x2007)), preview);
    EXPECT_EQ(Bytes(file, written.FindEntry(0x2005)), "the sensor's data, oddly long");
    EXPECT_EQ(Bytes(file, written.FindEntry(0x300a)), Bytes(source, ciff.FindEntry(0x300a)));
    EXPECT_EQ(TextOf(file).substr(0, 26), before.substr(0, 26));
    EXPECT_EQ(ReadCrwBasics(file).rotation, 270);
    const auto records = ReadCiffRoot(file, ReadCiffRootHeap(file));
    ASSERT_EQ(records.size(), 4U);
    EXPECT_EQ(file.ReadNumber(FindCiffTag(records, 0x5813)->position, 4, ByteOrder::Little), 77U);
    EXPECT_EQ(file.ReadNumber(FindCiffTag(records, 0x5813)->position + 4, 4, ByteOrder::Little), 88U);
    EXPECT_EQ(written.FindEntry(0x5813), std::nullopt);
  }
}

TEST(CiffFile, KeepsWhatEditorsAppended) {
  const auto plain = CiffBuilder().Data(0x2005, "raw").Data(0x2007, "old").BuildFile(Endian::Little);
  const auto place = plain.substr(plain.size() - 4);
  const auto before = plain + "BLOCK of an editor" + place;
  const auto source = SourceOf(before);
  EditedFile file(source);
  const std::string preview = "a longer preview";
  CiffFile(source).Write(file, {.preview = platform::AsBytes(preview)});
  const auto after = TextOf(file);
  const auto block = after.find("BLOCK of an editor");
  ASSERT_NE(block, std::string::npos);
  EXPECT_EQ(after.substr(block - 4, 4), after.substr(after.size() - 4));
  EXPECT_EQ(Bytes(file, CiffFile(file).FindEntry(0x2007)), preview);
  EXPECT_EQ(Bytes(file, CiffFile(file).FindEntry(0x2005)), "raw");
}

CiffBuilder Settings(int base) {
  std::vector<int> words(58);
  for (const int index : {7, 55, 56, 57}) words[static_cast<std::size_t>(index)] = base + index;
  std::vector<int> more(43);
  more[42] = base + 42;
  const auto inner = CiffBuilder().Shorts(0x102a, words).Shorts(0x102d, more).Shorts(0x10ae, {base + 1});
  return CiffBuilder().Heap(0x300b, inner).Heap(0x2807, CiffBuilder().Shorts(0x10b4, {base + 2}));
}

TEST(CiffFile, CarriesRawDataAndSettingsFromAnotherFile) {
  const auto make = [](const std::string& raw, int base) {
    return CiffBuilder()
        .Data(0x2005, raw)
        .Data(0x2007, "preview of " + raw)
        .Heap(0x300a, Settings(base))
        .BuildFile(Endian::Little);
  };
  const auto first = make("first", 100), second = make("the second", 500);
  const auto source = SourceOf(first), otherSource = SourceOf(second);
  const CiffFile ciff(source), other(otherSource);
  auto settings = other.CollectSettings();
  EXPECT_EQ(settings, (CiffSettings{501, 502, std::array<std::uint16_t, 3>{555, 556, 557}, 542, 507}));

  EditedFile file(source);
  ciff.Write(file, {.rawSource = &other, .settings = &settings});
  const CiffFile written(file);
  EXPECT_EQ(Bytes(file, written.FindEntry(0x2005)), "the second");
  EXPECT_EQ(Bytes(file, written.FindEntry(0x2007)), "preview of the second");
  settings.settingC = 107;  // is told, but never carried over
  EXPECT_EQ(written.CollectSettings(), settings);

  // One word less and the field is not there.
  const auto shorter = CiffBuilder().Shorts(0x102a, std::vector<int>(57)).Shorts(0x102d, std::vector<int>(42));
  const auto small = CiffBuilder().Heap(0x300a, CiffBuilder().Heap(0x300b, shorter)).BuildFile(Endian::Little);
  CiffSettings only;
  only.settingC = 0;
  EXPECT_EQ(CiffFile(SourceOf(small)).CollectSettings(), only);
}

TEST(CiffFile, TellsWhyItRefuses) {
  struct Case {
    const char* name;
    std::string file;
    std::string reason;
  };
  CiffBuilder full, tooFull;
  for (int i = 0; i < 20; ++i) full.Data(0x0100 + i, "x");
  tooFull = full;
  tooFull.Data(0x0200, "x");
  auto far = full.BuildFile(Endian::Little);
  far.replace(2, 4, "\xff\xff\xff\x7f");
  auto lost = full.BuildFile(Endian::Little);
  lost.replace(lost.size() - 4, 4, "\xff\xff\xff\x7f");
  const Case cases[] = {
      {"Full", full.BuildFile(Endian::Little), ""},
      {"TooFull", tooFull.BuildFile(Endian::Little), messages::kCiffEntries},
      {"BigEndian", full.BuildFile(Endian::Big), "Invalid CRW: not II aligned"},
      {"Empty", "", "Invalid CRW: not II aligned"},
      {"HeapBehindTheEnd", far, "fseek() error"},
      {"DirectoryBehindTheEnd", lost, "fseek() error"},
      {"DataBehindTheEnd", CiffBuilder().Entry(0x2005, 60, 20).BuildFile(Endian::Little), "fread() error"},
      {"SharedData", CiffBuilder().Entry(0x2005, 40, 0).Entry(0x2006, 40, 0).BuildFile(Endian::Little),
       "fread() error"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto source = SourceOf(c.file);
    EditedFile file(source);
    EXPECT_EQ(test::Refusal([&] { CiffFile(source).Write(file, {}); }), c.reason);
    EXPECT_EQ(file.Touched(), c.reason.empty());
  }
}

TEST(CiffFile, EndsOnHeapsInThemselves) {
  // Each of many entries is the whole heap again.
  CiffBuilder snake;
  for (int i = 0; i < 15; ++i) snake.Entry(0x300b, 2 + 15 * 10 + 4, 0);
  auto heap = snake.Build(Endian::Little);
  CiffSettings settings;
  PatchSettings(std::as_writable_bytes(std::span(heap)), settings, CiffPatch::Collect);
  EXPECT_EQ(settings, CiffSettings{});
}

}  // namespace
}  // namespace ml::metadata
