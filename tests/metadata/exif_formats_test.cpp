#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_comment.h"
#include "metadata/exif_data.h"
#include "metadata/exif_files.h"
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

TEST(ExifFormats, ExifDataBesideAPicture) {
  const test::TempDir dir;
  const auto picture = test::PaintPlain(33, 17, 0x808080);
  const auto exif = test::CameraExif().Build();
  const std::string_view uuid = "JpgTiffExif->JP2";
  const auto png = [&](const std::string& chunks) { return test::EncodePng(picture, {.before = chunks}); };
  const auto jp2 = [&](const std::string& box) {
    return test::EncodeJp2(picture, {.before = test::Jp2UuidBox(uuid, box)});
  };
  struct Case {
    const char* name;
    std::string content, comment;
  };
  const auto chunk = test::PngChunk("eXIf", exif);
  const Case cases[] = {
      {"a.png", png(chunk), ""},
      {"b.png",
       png(test::PngText("Description", "A text") + test::PngText("Source", "Other") + chunk +
           test::PngChunk("eXIf", "MM")),
       "A text"},
      {"a.jp2", jp2(exif), "A comment"},
      {"b.jpf", jp2(std::string("Exif\0\0", 6) + exif), "A comment"},
  };
  for (const auto& c : cases) {
    const ExifData data(dir.Write(c.name, c.content));
    EXPECT_EQ(std::tuple(data.make, data.model, data.shutterSpeed), std::tuple("Tarnwick", "Sample 1", "1/250"))
        << c.name;
    EXPECT_EQ(data.dateTime, "2003:05:17 10:11:12") << c.name;
    EXPECT_EQ(GetExifComment(data), c.comment) << c.name;
    EXPECT_EQ(std::pair(data.imageWidth, data.imageHeight), std::pair(33, 17)) << c.name;
    EXPECT_EQ(data.orientation, 0) << c.name << ": shown as it lies";
    EXPECT_FALSE(data.exifInvalid) << c.name;
  }
  const auto half = exif.substr(0, 40);
  for (const auto& [name, content] : {std::pair{"c.png", png(test::PngChunk("eXIf", half))}, {"c.jp2", jp2(half)}}) {
    const ExifData data(dir.Write(name, content));
    EXPECT_TRUE(data.exifInvalid) << name;
    EXPECT_EQ(data.imageWidth, 33) << name;
  }
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
