#include "metadata/xmp.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/exif_fields.h"
#include "metadata/xmp_values.h"
#include "platform/text.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

void Read(ExifData& data, const std::string& text) { ReadXmp(data, ByteView(platform::AsBytes(text), ByteOrder::Big)); }
ExifData DataOf(const std::string& text) {
  ExifData data;
  Read(data, text);
  return data;
}

void ExpectShot(const ExifData& data, const std::string& name) {
  const std::tuple texts(data.make, data.model, data.shutterSpeed, data.aperture, data.exposureMode, data.iso);
  EXPECT_EQ(texts, std::tuple("Tarnwick", "Sample 1", "1/125", "2.8", "Av", "200")) << name;
  EXPECT_EQ(std::tuple(data.dateTime, data.meteringMode, data.whiteBalance, data.owner, data.bodySerial),
            std::tuple("2003:05:17 10:11:12", "Multi-segment", "Cloudy", "A. Photographer", "42"))
      << name;
  EXPECT_EQ(std::tuple(data.contrast, data.saturation, data.sharpness, data.flash),
            std::tuple("Normal", "Low", "High", "On + Red-eye reduction"))
      << name;
  EXPECT_EQ(std::tuple(data.focalLength, data.focalLength35, data.lensMinFocal, data.lensMaxFocal),
            std::tuple(18.2, 29, 18, 70))
      << name;
  EXPECT_DOUBLE_EQ(data.exposureCompensation, -1.0 / 3) << name;
}

TEST(Xmp, TellsOfTheShotInAllItsCarriers) {
  const auto packet = test::XmpPacket("A description", test::XmpShot());
  const auto picture = test::PaintPlain(8, 8, 0);
  const std::pair<const char*, std::string> files[] = {
      {"a.jpg", test::InsertSegments(test::EncodeJpeg(picture), test::XmpSegment(packet))},
      {"a.tif", test::TiffBuilder().Short(256, 8).Bytes(700, packet).Build()},
      {"a.jp2", test::EncodeJp2(picture, {.before = test::Jp2XmpBox(packet)})},
  };
  const test::TempDir dir;
  for (const auto& [name, content] : files) ExpectShot(ExifData(dir.Write(name, content)), name);
}

TEST(Xmp, FieldsThatAreFilledKeepTheirValues) {
  const auto words = "<exif:ApertureValue>2/1</exif:ApertureValue>" + test::XmpShot();
  auto data = DataOf(words);
  EXPECT_EQ(data.aperture, "2.0") << "the first of two counts";
  Read(data,
       "<tiff:Make>Other</tiff:Make><exif:ExposureTime>1/2</exif:ExposureTime><exif:FocalLength>50/1</exif:FocalLength>"
       "<exif:Flash><exif:Fired>false</exif:Fired></exif:Flash><aux:Lens>50mm</aux:Lens>");
  data.aperture = "2.8";
  ExpectShot(data, "second packet");
}

TEST(Xmp, OddPacketsChangeNothingElse) {
  const auto empty = [](const std::string& text) {
    const auto data = DataOf(text);
    return std::ranges::none_of(ExifFields(), [&](const auto& field) { return HasContent(field.value(data)); });
  };
  for (const auto* text :
       {"", "<", "no element", "<dc:title>Sample</dc:title>", "<tiff:Make/>", "<tiff:Make></tiff:Make>",
        "<tiff:Make>cut", "<tiff:Make>x<y></tiff:Make>", "<exif:Flash exif:Mode='1'/>", "<a tiff:Make='x'/>",
        "<rdf:Description tiff:Make/>", "<rdf:Description tiff:Make=x/>", "<rdf:Description tiff:Make=\"x/>",
        "<rdf:Description exif:ISOSpeedRatings='200' tiff:Make=''/>",
        "<exif:ISOSpeedRatings>200</exif:ISOSpeedRatings>", "<aux:Lens>A1234</aux:Lens>",
        "<exif:FNumber>0.5</exif:FNumber>", "<dc:creator><rdf:Seq></rdf:Seq></dc:creator>"}) {
    EXPECT_TRUE(empty(text)) << text;
  }
  EXPECT_TRUE(empty(std::string("<a>\0<tiff:Make>x</tiff:Make>", 28))) << "read behind the end";
}

TEST(Xmp, NamesInAnyCaseAttributesAndLines) {
  EXPECT_EQ(DataOf("<TIFF:make xml:lang=\"en\">\nTarnwick</TIFF:make>").make, "");
  EXPECT_EQ(DataOf("<TIFF:make xml:lang=\"en\"> Tarnwick &amp; Co \nsecond</TIFF:make>").make, "Tarnwick & Co");
}

TEST(Xmp, PropertiesMayStandInAttributes) {
  const auto data = DataOf(
      "<rdf:RDF><rdf:Description rdf:about='' TIFF:make = \"Tarnwick &amp; 'Co'\"\n exif:FNumber='28/10'"
      " exif:DateTimeOriginal='2003-05-17T10:11:12' aux:Lens=\"18-70 mm\"><tiff:Model>Sample 1</tiff:Model>"
      "<exif:Flash exif:RedEyeMode='True' exif:Fired=\"True\"/></rdf:Description>"
      "<rdf:Description tiff:Make='Other' exif:ExposureTime='1/125'/></rdf:RDF>");
  EXPECT_EQ(std::tuple(data.make, data.model, data.aperture, data.shutterSpeed),
            std::tuple("Tarnwick & 'Co'", "Sample 1", "2.8", "1/125"));
  EXPECT_EQ(std::tuple(data.dateTime, data.lensMaxFocal, data.flash),
            std::tuple("2003:05:17 10:11:12", 70, "On + Red-eye reduction"));
}

TEST(Xmp, FlashWords) {
  const std::pair<const char*, const char*> cases[] = {
      {"<exif:Fired>True</exif:Fired><exif:Mode>3</exif:Mode>", "Auto"},
      {"<exif:Fired>False</exif:Fired>", "Off"},
      {"<exif:Fired>true</exif:Fired><exif:RedEyeMode>False</exif:RedEyeMode>", "On"},
      {"<rdf:Description exif:Fired='False' exif:Mode='2'/>", "Off"},
  };
  for (const auto& [children, word] : cases) {
    const auto data = DataOf("<exif:Flash>" + std::string(children) + "</exif:Flash><tiff:Make>x</tiff:Make>");
    EXPECT_EQ(data.flash, word);
    EXPECT_EQ(data.make, "x");
  }
}

TEST(XmpValues, Rationals) {
  const std::pair<const char*, double> cases[] = {{"", 0},        {"1/125", 0.008},    {"-1/3", -1.0 / 3}, {"0.5", 0},
                                                  {"2 1/2", 2.5}, {"-2 1/2", -2.5},    {"7", 7},           {"7/0", 0},
                                                  {"3 7/0", 3},   {"3 x/2", 3},        {"x", 0},           {"7/", 7},
                                                  {" 5/2", 2.5},  {"99999999999/2", 0}};
  for (const auto& [text, value] : cases) EXPECT_DOUBLE_EQ(ParseRational(text), value) << text;
}

TEST(XmpValues, Dates) {
  EXPECT_EQ(XmpDateText("2003-10-04T12:30:05.17Z"), "2003:10:04 12:30:05");
  EXPECT_EQ(XmpDateText("2003-10-04T12:30+02:00"), "2003:10:04 12:30:00");
  for (const auto* text : {"2003:10:04 12:30:00", "Tuesday", ""}) EXPECT_EQ(XmpDateText(text), text);
}

TEST(XmpValues, FocalRanges) {
  const std::tuple<const char*, double, double> cases[] = {
      {"18.0-70.0 mm f/3.5-4.5", 18, 70}, {"EF50mm f/1.8", 50, 50}, {"24 to 105 MM", 24, 105}};
  for (const auto& [lens, least, most] : cases) {
    const auto range = FocalRangeOf(lens);
    ASSERT_TRUE(range) << lens;
    EXPECT_EQ(std::pair(range->least, range->most), std::pair(least, most)) << lens;
  }
  EXPECT_FALSE(FocalRangeOf("mm 50"));
  EXPECT_FALSE(FocalRangeOf("A1234"));
}

}  // namespace
}  // namespace ml::metadata
