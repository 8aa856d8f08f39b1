#include "metadata/tiff_raw.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/camera_raw.h"
#include "support/jpeg_builder.h"

namespace ml::metadata {
namespace {

using test::CameraRaw;
using test::Endian;
using test::TiffBuilder;

CameraRaw Camera(Endian order) {
  return {.width = 64, .height = 48, .previewWidth = 320, .previewHeight = 240, .orientation = 6, .order = order};
}
const std::string kShort = "\xff\xd8\xff short", kLong = "\xff\xd8\xff rather longer",
                  kNoJpeg = "\xff\xd9 is the longest of all";

TiffBuilder Jpeg(const std::string& stream) { return TiffBuilder().Short(259, 6).Pieces(513, 514, {stream}); }

std::string Bytes(const std::string& file, const std::optional<FileRange>& range) {
  return range ? file.substr(range->position, range->size) : "nothing";
}

struct Format {
  const char* name;
  std::optional<FileRange> (*find)(const ByteSource&);
  std::string (*make)(const CameraRaw&);
  std::uint64_t base;
};
const Format kFormats[] = {
    {"Nef", FindNefPreview, [](const CameraRaw& raw) { return test::NefDirectories(raw).Build(); }, 0},
    {"Orf", FindOrfPreview, [](const CameraRaw& raw) { return test::OrfDirectories(raw).Build(); }, 0},
    {"Pef", FindPefPreview, [](const CameraRaw& raw) { return test::PefDirectories(raw).Build(); }, 0},
    {"Mrw", FindMrwPreview, [](const CameraRaw& raw) { return test::MrwFile(raw, test::MrwDirectories(raw)); }, 48},
    {"Raf", FindRafPreview, [](const CameraRaw& raw) { return test::RafFile(raw, test::RafDirectories(raw)); }, 120},
};
class RawFormat : public testing::TestWithParam<Format> {};

TEST_P(RawFormat, PreviewAndOrientationInEitherByteOrder) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto raw = Camera(order);
    const auto file = GetParam().make(raw);
    const auto range = GetParam().find(SourceOf(file));
    ASSERT_TRUE(range);
    // A RAF's preview is the JPEG that holds its metadata too.
    const auto preview = test::RawPreview(raw);
    EXPECT_EQ(file.substr(range->End() - (preview.size() - 2), preview.size() - 2), preview.substr(2));
    EXPECT_EQ(file.substr(range->position, 2), "\xff\xd8");
    EXPECT_EQ(ReadTiffOrientation(SourceOf(file), GetParam().base, TiffMagic::Any), 6U);
  }
}

INSTANTIATE_TEST_SUITE_P(All, RawFormat, testing::ValuesIn(kFormats),
                         [](const auto& c) { return std::string(c.param.name); });

TEST(NefPreview, LongestStreamOfTheSubDirectoriesOnly) {
  auto tiff = Jpeg(kLong + kLong);
  const auto one = TiffBuilder(tiff).SubDirectories({Jpeg(kShort)}).Build();
  EXPECT_EQ(Bytes(one, FindNefPreview(SourceOf(one))), kShort);
  const auto three = TiffBuilder(tiff).SubDirectories({Jpeg(kNoJpeg), Jpeg(kLong), Jpeg(kShort)}).Build();
  EXPECT_EQ(Bytes(three, FindNefPreview(SourceOf(three))), kLong);
  const auto strip = TiffBuilder().SubDirectories({TiffBuilder().Short(259, 7).Pieces(273, 279, {kLong})}).Build();
  EXPECT_EQ(Bytes(strip, FindNefPreview(SourceOf(strip))), kLong);
  const auto none = tiff.Build();
  EXPECT_FALSE(FindNefPreview(SourceOf(none)));
}

TEST(NefPreview, BrokenSubDirectoriesCostOnlyThemselves) {
  // Offsets: behind the file, the first directory itself, and more of them than the file holds.
  auto file = TiffBuilder().SubDirectories({Jpeg(kShort), Jpeg(kShort), Jpeg(kLong)}).Build();
  const auto list = file.find(std::string("\x4a\x01\x04\0\3\0\0\0", 8)) + 8;
  const auto at = static_cast<std::size_t>(static_cast<unsigned char>(file[list]));
  file.replace(at, 8, std::string("\xff\xff\xff\xff\x08\0\0\0", 8));
  EXPECT_EQ(Bytes(file, FindNefPreview(SourceOf(file))), kLong);
  file.replace(list - 4, 4, "\xff\xff\xff\xff");
  EXPECT_EQ(Bytes(file, FindNefPreview(SourceOf(file))), kLong);
}

TEST(OrfPreview, CameraSettingsOfLaterMakerNotes) {
  const std::string prefix("OLYMPUS\0II\3\0", 12);
  TiffBuilder settings;
  settings.Long(0x101, 200).Long(0x102, 19);
  // The note's offsets count from its own start: the settings stand at 30, the stream 200 bytes on.
  const auto plain = TiffBuilder().Raw(0x2020, 13, 1, 30).Build().substr(8);
  auto note = prefix + plain;
  const auto settingsBytes = settings.Build().substr(8);
  note += settingsBytes + std::string(200 - note.size() - settingsBytes.size(), '\0') + kLong;
  const auto file = TiffBuilder().Directory(34665, TiffBuilder().Undefined(37500, note)).Magic(0x4f52).Build();
  EXPECT_EQ(Bytes(file, FindOrfPreview(SourceOf(file))), kLong.substr(0, 19));
}

TEST(RafPreview, LyingHeadersGiveNothing) {
  const auto raw = Camera(Endian::Big);
  const auto file = test::RafFile(raw, test::RafDirectories(raw));
  for (const auto& [at, bytes] : {std::pair{std::size_t{0}, std::string("X")},
                                  {84, std::string(4, '\xff')},
                                  {84, std::string(4, '\0')},
                                  {88, std::string(4, '\0')}}) {
    auto changed = file;
    changed.replace(at, bytes.size(), bytes);
    EXPECT_FALSE(FindRafPreview(SourceOf(changed))) << at;
  }
}

TEST(RafTiffBase, FollowsTheFileHeaderToExifOnly) {
  const auto raw = Camera(Endian::Little);
  const auto earlier = test::RafFile(raw, test::RafDirectories(raw));
  EXPECT_EQ(FindRafTiffBase(SourceOf(earlier)), 120U);
  const auto file = test::RafFile(raw, test::RafDirectories(raw), 148);
  EXPECT_EQ(FindRafTiffBase(SourceOf(file)), 160U);
  EXPECT_EQ(ReadTiffOrientation(SourceOf(file), 160), 6U);
  for (const auto& [at, bytes] : {std::pair{std::size_t{0}, std::string("X")},
                                  {84, std::string(4, '\xff')},
                                  {84, std::string(4, '\0')},
                                  {151, std::string("\xe0")},
                                  {154, std::string("Xxif")}}) {
    auto changed = file;
    changed.replace(at, bytes.size(), bytes);
    EXPECT_EQ(FindRafTiffBase(SourceOf(changed)), kRafTiffBase) << at;
  }
  for (std::size_t size = 0; size <= 160; ++size) {
    const auto prefix = file.substr(0, size);
    EXPECT_EQ(FindRafTiffBase(SourceOf(prefix)), size < 158 ? 120U : 160U) << size;
  }
}

TEST(TiffOrientation, MagicMattersWhereItIsRequired) {
  const auto file = TiffBuilder().Short(274, 8).Magic(0x4f52).Build();
  EXPECT_FALSE(ReadTiffOrientation(SourceOf(file), 0));
  EXPECT_EQ(ReadTiffOrientation(SourceOf(file), 0, TiffMagic::Any), 8U);
  const auto second = TiffBuilder().Short(256, 1).Next(TiffBuilder().Short(274, 8)).Build();
  EXPECT_FALSE(ReadTiffOrientation(SourceOf(second), 0));
}

}  // namespace
}  // namespace ml::metadata
