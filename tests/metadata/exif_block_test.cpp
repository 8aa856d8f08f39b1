#include "metadata/exif_block.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/jpeg_builder.h"

namespace ml::metadata {
namespace {

using test::ExifFields;

std::optional<int> Orientation(const std::string& bytes) { return ReadOrientationFromExif(SourceOf(bytes)); }
std::vector<std::uint64_t> Thumbnails(const std::string& bytes) { return FindExifThumbnails(SourceOf(bytes)); }

const std::string kPlain = "\xff\xd8" + test::JpegSegment(0xe0, "JFIF");

TEST(ExifOrientation, KnownValuesInEitherByteOrder) {
  const std::pair<int, std::optional<int>> cases[] = {{1, 0},  {3, 180},          {6, 90},           {8, 270},
                                                      {2, {}}, {5, std::nullopt}, {9, std::nullopt}, {0, {}}};
  for (const auto& [stored, degrees] : cases) {
    for (const bool big : {false, true}) {
      EXPECT_EQ(Orientation(test::WithExif(kPlain, ExifFields{.bigEndian = big, .make = "M", .orientation = stored})),
                degrees)
          << stored;
    }
  }
  EXPECT_EQ(Orientation(kPlain), std::nullopt);
}

TEST(ExifOrientation, UnknownValuesAndBrokenBlocksAreNotTheEnd) {
  const auto good = test::JpegSegment(0xe1, test::ExifPayload({.orientation = 6}));
  const auto mirrored = test::JpegSegment(0xe1, test::ExifPayload({.orientation = 2}));
  auto payload = test::ExifPayload({.make = "cut here", .orientation = 3});
  const auto broken = test::JpegSegment(0xe1, payload.substr(0, 20));
  payload[6] = 'X';
  const auto noTiff = test::JpegSegment(0xe1, payload), xmp = test::JpegSegment(0xe1, "http://ns.example/xap/");
  for (const auto& first : {mirrored, broken, noTiff, xmp, test::JpegSegment(0xe1, "Exif")}) {
    EXPECT_EQ(Orientation(test::InsertSegments(kPlain, first + good)), 90);
  }
}

TEST(ExifThumbnails, PositionsCountFromTheFilesStart) {
  const std::string stream = "\xff\xd8stream";
  for (const bool big : {false, true}) {
    const auto file =
        test::WithExif(kPlain, {.bigEndian = big, .make = "M", .dateTime = "2003:05:17 10:11:12", .thumbnail = stream});
    ASSERT_EQ(Thumbnails(file).size(), 1U);
    EXPECT_EQ(Thumbnails(file)[0], file.find(stream));
  }
  EXPECT_TRUE(Thumbnails(test::WithExif(kPlain, {.make = "M"})).empty());
  const auto block = test::JpegSegment(0xe1, test::ExifPayload({.thumbnail = stream}));
  EXPECT_EQ(Thumbnails(test::InsertSegments(kPlain, block + block)).size(), 2U);
}

}  // namespace
}  // namespace ml::metadata
