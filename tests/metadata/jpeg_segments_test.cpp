#include "metadata/jpeg_segments.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "metadata/jpeg_size.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "support/jpeg_builder.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

std::string Describe(const ByteSource& source) {
  JpegSegments segments(source);
  std::string text;
  while (const auto segment = segments.Next()) {
    char piece[64];
    std::snprintf(piece, sizeof piece, "%02x@%d+%u%s ", segment->marker, static_cast<int>(segment->offset),
                  segment->payloadSize, segment->cut ? "!" : "");
    text += piece;
  }
  return text + "|" + std::to_string(segments.Position());
}

std::string Describe(const std::string& bytes) { return Describe(MemorySource(platform::AsBytes(bytes))); }

const std::string kStart = "\xff\xd8";

TEST(JpegSegments, EndsWhereTheRulesSay) {
  const auto app0 = test::JpegSegment(0xe0, "JFIF"), scan = test::JpegSegment(0xda, "abc");
  EXPECT_EQ(Describe(""), "|0");
  EXPECT_EQ(Describe("no picture"), "|0");
  EXPECT_EQ(Describe(kStart), "|2");
  EXPECT_EQ(Describe(kStart + app0 + scan + "data\xff\xd9"), "e0@2+4 da@10+3 |17");
  EXPECT_EQ(Describe(kStart + app0 + scan + std::string("\xff\0\xff\xe1\0\4xx", 8)), "e0@2+4 da@10+3 |17")
      << "compressed data that looks like a segment";
  EXPECT_EQ(Describe(kStart + kStart + "\xff\xd9" + app0), "e0@6+4 |14") << "markers without length are passed over";
  EXPECT_EQ(Describe(kStart + app0 + "x" + app0), "e0@2+4 |10");
  EXPECT_EQ(Describe(kStart + std::string("\xff\xe1\0\1", 4) + app0), "|2") << "a length under 2";
  EXPECT_EQ(Describe(kStart + std::string("\xff\xe1\0\2", 4) + app0), "e1@2+0 e0@6+4 |14");
  EXPECT_EQ(Describe(kStart + "\xff\xff" + app0), "e0@4+4 |12") << "fill bytes";
  EXPECT_EQ(Describe(kStart + std::string("\xff\xe1\0\x10only", 8)), "e1@2+4! |10");
  EXPECT_EQ(Describe(kStart + "\xff\xe1"), "|2");
}

TEST(JpegSegments, AFileIsReadInPiecesAsMemoryIs) {
  const test::TempDir dir;
  std::string bytes = kStart;
  for (int i = 0; i < 40; ++i) bytes += test::JpegSegment(0xe2, std::string(static_cast<std::size_t>(i * 37), 'x'));
  bytes += test::JpegSegment(0xe1, std::string(9000, 'y')) + test::JpegSegment(0xfe, "end");
  const platform::ReadableFile file(dir.Write("a.jpg", bytes));
  const FileSource source(file);
  EXPECT_EQ(Describe(source), Describe(bytes));
  EXPECT_EQ(source.Read(bytes.size() - 3, 3).size(), 3U);
  EXPECT_THROW(source.Read(bytes.size() - 3, 4), ExifException);
  EXPECT_THROW(source.Read(~std::uint64_t{0}, 2), ExifException);
  EXPECT_THROW(platform::ReadableFile(dir.Path()), platform::UserError);
  EXPECT_THROW(platform::ReadableFile(dir / "missing"), platform::UserError);
}

TEST(JpegSize, ComesFromTheFrameHeader) {
  const auto read = [](const std::string& bytes) { return ReadJpegSize(MemorySource(platform::AsBytes(bytes))); };
  const auto tables = test::JpegSegment(0xc4, std::string(20, '\1')), app0 = test::JpegSegment(0xe0, "JFIF");
  const std::string frame("\x08\x01\x02\x03\x04\3restofit", 14);
  const auto size = read(kStart + app0 + tables + test::JpegSegment(0xc0, frame));
  ASSERT_TRUE(size.has_value());
  EXPECT_EQ(size->width, 0x304);
  EXPECT_EQ(size->height, 0x102);
  EXPECT_EQ(size->components, 3);
  EXPECT_FALSE(size->progressive);
  EXPECT_TRUE(read(kStart + test::JpegSegment(0xc2, frame))->progressive);
  EXPECT_FALSE(read(kStart + tables).has_value());
  EXPECT_FALSE(read(kStart + test::JpegSegment(0xc0, "\x08\x01\x02")).has_value());
}

}  // namespace
}  // namespace ml::metadata
