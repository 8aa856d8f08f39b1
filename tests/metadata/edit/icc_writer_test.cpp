#include "metadata/edit/icc_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "../memory.h"
#include "metadata/icc_carriers.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"

namespace ml::metadata {
namespace {

using platform::AsBytes;

std::string Profile(std::size_t size) {
  std::string profile(size, '\0');
  for (std::size_t i = 0; i < size; ++i) profile[i] = static_cast<char>(i * 31 + i / 251);
  return profile;
}

std::string Embedded(const std::string& jpeg, const std::string& profile) {
  const MemorySource source(AsBytes(jpeg));
  EditedFile edited(source);
  EXPECT_TRUE(WriteIccProfile(edited, AsBytes(profile)));
  return TextOf(edited);
}

TEST(WriteIccProfile, StandsBehindTheLeadingSegmentsAndTakesThePlaceOfTheOld) {
  const auto body = EncodeJpeg(test::PaintPlain(16, 16, 0x336699)).substr(2);  // begins with a JFIF segment of 18 bytes
  const auto jfif = body.substr(0, 18), picture = body.substr(18), start = std::string("\xff\xd8");
  const auto exif = test::JpegSegment(0xe1, test::ExifPayload({.orientation = 6}));
  const auto other = test::JpegSegment(0xe2, "MPF\0 something else"), comment = test::CommentSegment("text");
  const auto old = test::IccSegments(Profile(300), 3);
  const auto profile = Profile(400), added = test::IccSegments(profile);
  struct Case {
    std::string before, after;
  };
  const Case cases[] = {
      {jfif + exif + comment, jfif + exif + added + comment},
      {exif + jfif + other + exif, exif + jfif + added + other + exif},
      {jfif + old + exif + other, jfif + exif + added + other},
      {jfif + exif + comment + old + other, jfif + exif + added + comment + other},
      {old + comment, added + comment},
      {comment, added + comment},
      {"", added},
  };
  for (const auto& [before, after] : cases) {
    EXPECT_EQ(Embedded(start + before + picture, profile), start + after + picture);
  }
}

TEST(WriteIccProfile, IsCutIntoSegmentsThatReadBack) {
  const auto jpeg = EncodeJpeg(test::PaintPlain(16, 16, 0x336699));
  const std::pair<std::size_t, std::size_t> cases[] = {{1, 1},       {65'518, 1},  {65'519, 2},
                                                       {65'520, 2},  {70'000, 2},  {131'036, 2},
                                                       {131'037, 3}, {131'040, 3}, {1'048'576, 17}};
  for (const auto& [size, count] : cases) {
    const auto profile = Profile(size);
    const auto file = Embedded(jpeg, profile);
    EXPECT_EQ(file.size(), jpeg.size() + size + count * 18) << size;
    const auto read = ReadJpegIccProfile(MemorySource(AsBytes(file)));
    ASSERT_TRUE(read) << size;
    EXPECT_TRUE(std::ranges::equal(*read, AsBytes(profile))) << size;
    EXPECT_EQ(Embedded(file, profile), file) << "once more changes nothing";
  }
}

TEST(WriteIccProfile, LeavesAloneWhatItCannotServe) {
  const auto jpeg = EncodeJpeg(test::PaintPlain(16, 16, 0x336699));
  const MemorySource source(AsBytes(jpeg));
  EditedFile edited(source);
  EXPECT_THROW(WriteIccProfile(edited, {}), platform::UserError);
  EXPECT_THROW(WriteIccProfile(edited, AsBytes(std::string(255 * kIccSegmentData + 1, 'x'))), platform::UserError);
  for (const auto& text : {std::string(), std::string("\xff\xd8\xff\xd9"), std::string("text")}) {
    const MemorySource empty(AsBytes(text));
    EditedFile none(empty);
    EXPECT_FALSE(WriteIccProfile(none, AsBytes(Profile(10))));
    EXPECT_FALSE(none.Touched());
  }
  EXPECT_FALSE(edited.Touched());
}

}  // namespace
}  // namespace ml::metadata
