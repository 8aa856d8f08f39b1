#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_data.h"
#include "metadata/xmp_scan.h"
#include "platform/text.h"
#include "support/bmp_builder.h"
#include "support/gif_builder.h"
#include "support/jp2_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

TEST(ExifFormats, SizesAndProfilesFromTheHeadersOfPictures) {
  const auto picture = test::PaintPlain(33, 17, 0x808080);
  const auto profile = test::IccProfile("Test");
  struct Case {
    const char* name;
    std::string content;
    bool profile;
  };
  const Case cases[] = {
      {"a.gif", test::EncodeGif({picture}), false},
      {"a.BMP", test::EncodeBmp(picture), false},
      {"a.png", test::EncodePng(picture), false},
      {"b.png", test::EncodePng(picture, {.before = test::PngProfile("Test", profile)}), true},
      {"a.psd", test::EncodePsd(picture), false},
      {"b.psd", test::EncodePsd(picture, {.resources = test::ImageResources({{1039, profile}})}), true},
      {"a.jp2", test::EncodeJp2(picture), false},
      {"a.jpf", test::EncodeJp2(picture, {.profile = profile}), true},
  };
  const test::TempDir dir;
  for (const auto& c : cases) {
    const ExifData data(dir.Write(c.name, c.content));
    EXPECT_EQ(data.imageWidth, 33) << c.name;
    EXPECT_EQ(data.imageHeight, 17) << c.name;
    EXPECT_EQ(data.hasIccProfile, c.profile) << c.name;
    EXPECT_FALSE(data.exifInvalid) << c.name;
  }
}

TEST(ExifFormats, TextsOfPngFiles) {
  const test::TempDir dir;
  const auto read = [&](const std::string& date) {
    const auto texts = test::PngText("Description", "A comment ") + test::PngText("Software", "Version 1") +
                       test::PngText("Source", "Sample 1") + test::PngText("Creation Time", date);
    return ExifData(dir.Write("a.png", test::EncodePng(test::PaintPlain(8, 8, 0), {.before = texts})));
  };
  const auto data = read("2003-05-17 10:11:12");
  EXPECT_EQ(data.comment, "A comment");
  EXPECT_EQ(data.firmware, "Version 1");
  EXPECT_EQ(data.model, "Sample 1");
  EXPECT_EQ(data.dateTime, "2003:05:17 10:11:12");
  EXPECT_NE(read("17 May 2003").dateTime, "17 May 2003");
}

TEST(XmpScan, FindsThePacketNearTheStart) {
  const auto find = [](const std::string& file) {
    const auto packet = FindXmpPacket(MemorySource(platform::AsBytes(file)));
    return std::string(reinterpret_cast<const char*>(packet.data()), packet.size());
  };
  const std::string opening = "<?xpacket begin='", packet = "<x:xmpmeta>data";
  EXPECT_EQ(find("box<" + opening + "' id=''?>" + packet), packet);
  EXPECT_EQ(find(std::string(61'440, ' ') + opening + packet), packet);
  EXPECT_EQ(find(std::string(61'441, ' ') + opening + packet), "");
  EXPECT_EQ(find(opening + packet + std::string(30'000, 'x')).size(), 20'480U);
  EXPECT_EQ(find("<?xpacket begin=\"\"?>" + packet), packet);
  EXPECT_EQ(find("<?xpacket begin=" + packet), "");
  EXPECT_EQ(find(opening), "");
  EXPECT_EQ(find(""), "");
}

}  // namespace
}  // namespace ml::metadata
