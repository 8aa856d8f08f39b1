#include <gtest/gtest.h>

#include "metadata/exif_comment.h"
#include "metadata/exif_data.h"
#include "support/avi_builder.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;

const test::IptcEntry kEncoding{.dataset = 90, .value = "\x1b%G", .record = 1};
const std::string kBlock = test::IptcBlock({kEncoding, {25, "one"}, {25, "two"}, {120, "A caption "}});
const std::string kTexts = "2:25:3:one\n2:25:3:two\n2:120:10:A caption \n";
const std::string kResources = test::ImageResources({{1005, "odd"}, {1028, kBlock, "name"}, {1061, "digest"}});

std::string Jpeg(const std::string& segments) {
  return test::InsertSegments(test::EncodeJpeg(test::PaintPlain(8, 8, 0)), segments);
}
std::string Tiff(int type) {
  const auto padded = kBlock + std::string((4 - kBlock.size() % 4) % 4, '\0');
  const auto count = static_cast<std::uint32_t>(type == 4 ? padded.size() / 4 : padded.size());
  return test::TiffBuilder().Short(256, 8).Data(33723, type, count, padded).Build();
}
std::string Png(const std::string& texts) {
  return test::EncodePng(test::PaintPlain(8, 8, 0), {.after = test::PngText("IPTC", texts)});
}

TEST(IptcCarriers, EachTellsTheSame) {
  struct Case {
    std::string file, content;
    bool withEncoding = true;
    std::string companion{};
  };
  const auto plain = test::PaintPlain(8, 8, 0);
  const auto jpeg = Jpeg(test::ResourceSegment(kResources));
  const Case cases[] = {
      {"a.jpg", jpeg},
      {"a.THM", jpeg},
      {"b.jpeg", Jpeg(test::JpegSegment(0xed, kResources))},
      {"c.jpe", Jpeg(test::JpegSegment(0xed, "mark" + kBlock))},
      {"a.tif", Tiff(4)},
      {"a.tiff", Tiff(1)},
      {"b.tif", Tiff(7)},
      {"a.nef", Tiff(4)},
      {"a.psd", test::EncodePsd(plain, {.resources = kResources})},
      {"a.jp2", test::EncodeJp2(plain, {.after = test::Jp2IptcBox(kBlock)})},
      {"a.png", Png(kTexts), false},
      {"movie.avi", test::EncodeAvi({plain}), true, "movie.thm"},
      {"raw.crw", "no heap", true, "raw.thm"},
  };
  const test::TempDir dir;
  for (const auto& c : cases) {
    if (!c.companion.empty()) dir.Write(c.companion, jpeg);
    const ExifData data(dir.Write(c.file, c.content));
    auto expected = Items{{2, 25, "one"}, {2, 25, "two"}, {2, 120, "A caption "}};
    if (c.withEncoding) expected.insert(expected.begin(), {1, 90, "\x1b%G"});
    EXPECT_EQ(data.iptc, expected) << c.file;
    EXPECT_EQ(data.iptcSurroundings.otherRecords, c.withEncoding ? test::IptcBlock({kEncoding}) : "") << c.file;
    EXPECT_EQ(GetComment(data, {.iptcComments = true}), "A caption") << c.file;
  }
}

TEST(IptcCarriers, FilesWithoutTheResourceOrItsHomeTellNothing) {
  const auto other = test::ResourceSegment(test::ImageResources({{1005, kBlock}}));
  const auto later = test::ResourceSegment(kResources);
  const std::pair<const char*, std::string> cases[] = {
      {"a.jpg", Jpeg(other)}, {"b.jpg", Jpeg(other + later)}, {"c.jpg", Jpeg(test::ResourceSegment(""))},
      {"a.tif", Tiff(2)},     {"a.png", Png("no lines")},     {"a.crw", "no companion"},
  };
  const test::TempDir dir;
  for (const auto& [file, content] : cases) EXPECT_TRUE(ExifData(dir.Write(file, content)).iptc.empty()) << file;
}

TEST(IptcCarriers, AResourceThatTheSegmentCutsOffIsReadAsFarAsItIsThere) {
  const auto whole = test::ImageResources({{1028, test::IptcBlock({{25, "one"}, {120, "A caption"}})}});
  const test::TempDir dir;
  const auto read = [&](std::size_t size) {
    return ExifData(dir.Write("a.jpg", Jpeg(test::ResourceSegment(whole.substr(0, size))))).iptc;
  };
  EXPECT_EQ(read(whole.size() - 5), (Items{{2, 25, "one"}, {2, 120, "A ca"}}));
  EXPECT_EQ(read(13), Items());
}

}  // namespace
}  // namespace ml::metadata
