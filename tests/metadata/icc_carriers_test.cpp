#include "metadata/icc_carriers.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "metadata/tiff_facts.h"
#include "support/byte_string.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/temp_dir.h"
#include "support/tiff_builder.h"

namespace ml::metadata {
namespace {

const std::string kProfile = "a profile of some length";

std::string App2(int number, int total, std::string_view part) {
  std::string payload("ICC_PROFILE\0", 12);
  payload += static_cast<char>(number);
  payload += static_cast<char>(total);
  return test::JpegSegment(0xe2, payload + std::string(part));
}
std::string Jpeg(const std::string& segments) {
  return "\xff\xd8" + test::JpegSegment(0xe0, "JFIF") + segments + test::JpegSegment(0xda, "scan");
}
std::string Joined(const std::string& segments) {
  const auto file = Jpeg(segments);
  const auto profile = ReadJpegIccProfile(SourceOf(file));
  return profile ? TextOf(*profile) : "nothing";
}

TEST(JpegProfile, SegmentsJoinInTheirOrderOnly) {
  const auto other = test::JpegSegment(0xe2, "MPF") + test::JpegSegment(0xe1, std::string("ICC_PROFILE\0\1\1x", 15));
  const std::pair<std::string, std::string> cases[] = {
      {App2(1, 1, "all"), "all"},
      {App2(1, 2, "a") + other + App2(2, 2, "b"), "ab"},
      {App2(1, 1, "a") + App2(1, 1, "b"), "a"},
      {App2(2, 2, "b") + App2(1, 2, "a"), "nothing"},
      {App2(1, 2, "a") + App2(1, 2, "b"), "nothing"},
      {App2(1, 2, "a") + App2(2, 3, "b"), "nothing"},
      {App2(1, 2, "a"), "nothing"},
      {App2(1, 0, "a"), "nothing"},
      {App2(0, 1, "a"), "nothing"},
      {test::JpegSegment(0xe2, std::string("ICC_PROFILE\0\1", 13)), "nothing"},
      {"", "nothing"},
  };
  for (const auto& [segments, profile] : cases) EXPECT_EQ(Joined(segments), profile);
}

TEST(JpegProfile, HasAMebibyteAtMost) {
  const auto build = [](std::size_t size) {
    constexpr std::size_t piece = 65000;
    std::string segments;
    const auto total = static_cast<int>((size + piece - 1) / piece);
    for (int i = 0; i < total; ++i) {
      segments += App2(i + 1, total, std::string(std::min(piece, size - static_cast<std::size_t>(i) * piece), 'p'));
    }
    return segments;
  };
  EXPECT_EQ(Joined(build(1'048'576)).size(), 1'048'576U);
  EXPECT_EQ(Joined(build(1'048'577)), "nothing");
}

TEST(JpegProfile, ASegmentThatIsCutIsNone) {
  const auto file = "\xff\xd8" + App2(1, 1, kProfile);
  for (std::size_t size = 0; size < file.size(); ++size) {
    const auto prefix = file.substr(0, size);
    EXPECT_FALSE(ReadJpegIccProfile(SourceOf(prefix))) << size;
  }
}

TEST(GetIccProfile, ReaderGoesByTheName) {
  const test::TempDir dir;
  const auto picture = test::PaintPlain(2, 2, 0xffffff);
  const auto jpeg = Jpeg(App2(1, 1, kProfile)), tiff = test::TiffBuilder().Undefined(34675, kProfile).Build();
  const auto resources = test::ImageResources({{.id = 1028, .data = "x"}, {.id = 1039, .data = kProfile}});
  const auto psd = test::EncodePsd(picture, {.resources = resources});
  const auto png = test::EncodePng(picture, {.before = test::PngProfile("name", kProfile)});
  struct Case {
    const char* name;
    const std::string& content;
    bool found;
  };
  const Case cases[] = {{"a.jpg", jpeg, true},  {"a.JPE", jpeg, true},  {"a.jpeg", jpeg, true}, {"a.tif", tiff, true},
                        {"a.TIFF", tiff, true}, {"a.psd", psd, true},   {"a.png", png, true},   {"b.png", jpeg, false},
                        {"b.jp2", jpeg, false}, {"b.thm", jpeg, false}, {"b.nef", tiff, false}, {"jpeg", jpeg, false}};
  for (const auto& c : cases) {
    const auto profile = GetIccProfileData(dir.Write(c.name, c.content));
    ASSERT_EQ(profile.has_value(), c.found) << c.name;
    if (profile) {
      EXPECT_EQ(TextOf(*profile), kProfile) << c.name;
    }
  }
  EXPECT_FALSE(GetIccProfileData(dir / "missing.jpg"));
}

TEST(TiffProfile, MustLieInTheFile) {
  for (const auto& [count, offset] : {std::pair{100U, 8U}, {0xffffffffU, 8U}, {10U, 0xfffffff0U}, {4U, 8U}}) {
    const auto file = test::TiffBuilder().Raw(34675, 7, count, offset).Build();
    EXPECT_FALSE(ReadTiffIccProfile(SourceOf(file))) << count;
  }
}

}  // namespace
}  // namespace ml::metadata
