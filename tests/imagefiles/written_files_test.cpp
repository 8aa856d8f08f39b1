#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "imagefiles/embedded_profile.h"
#include "imagefiles/format_table.h"
#include "imagefiles/metadata_blocks_of.h"
#include "imagefiles/picture_reader.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/writers/write_image.h"
#include "metadata/exif_block.h"
#include "platform/readable_file.h"
#include "platform/text.h"
#include "support/byte_string.h"
#include "support/canon_builder.h"
#include "support/colour_profiles.h"
#include "support/jpeg_builder.h"
#include "support/maker_notes.h"
#include "support/metadata_blocks.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

/// What is written is read back by the readers of the program.
namespace ml::imagefiles {
namespace {

using imaging::WrittenFormat;
using metadata::ExifData;
using test::BytesOf;

constexpr int kWidth = 200, kHeight = 120;

/// A camera's JPEG with a private note, a comment, XMP and IPTC data, lying on its side.
std::string Source() {
  auto exif = test::ExifDirectories({.make = "Canon", .model = "Canon EOS D60", .dateTime = "2003:05:17 10:11:12"});
  test::TiffBuilder shot;
  shot.Rational(33434, 1, 250).Rational(33437, 28, 10).Short(34855, 400).Ascii(36867, "2003:05:17 10:11:12");
  shot.Undefined(37510, std::string("ASCII\0\0\0Over the hill", 21) + std::string(243, '\0'));
  exif.Without(34665).Short(274, 6).Directory(34665, shot.Note(37500, "", test::CanonNote()));
  const auto iptc = test::ImageResources({{1028, test::IptcBlock({{25, "hill"}, {80, "A. Photographer"}})}});
  const auto segments = test::ExifSegment(exif) + test::XmpSegment(test::XmpPacket("kept")) +
                        test::ResourceSegment(iptc) + test::IccSegments(test::EncodeProfile({.name = "Own"}));
  return test::InsertSegments(test::EncodeJpeg(test::PaintPlain(64, 48, 0x808080)), segments);
}

/// Half red, half blue: an edge far from it shows how well samples come back.
imaging::PixelBuffer Halves(int bytesPerSample) {
  auto pixels = imaging::MakePixelBuffer(kWidth, kHeight, imaging::PixelOrder::Rgb, bytesPerSample);
  const auto sample = static_cast<std::size_t>(bytesPerSample);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const auto at = (static_cast<std::size_t>(x) * 3 + (x < kWidth / 2 ? 0 : 2)) * sample;
      std::fill_n(pixels.Row(y) + at, sample, std::byte{0xe0});
    }
  }
  return pixels;
}

imaging::PictureSize AsItIs(int width, int height) { return {width, height}; }

imaging::PixelBuffer ReadBack(const std::string& path) {
  const platform::ReadableFile file(path);
  const metadata::FileSource source(file);
  const ImageFileOptions options;
  return ReadPicture(*FindFormat(path), {.path = path, .file = source, .options = options, .wanted = AsItIs})
      .decoded.pixels;
}

void ExpectHalves(const imaging::PixelBuffer& pixels) {
  ASSERT_EQ(pixels.width, kWidth);
  ASSERT_EQ(pixels.height, kHeight);
  const int red = pixels.order == imaging::PixelOrder::Rgb ? 0 : 2;
  for (const int x : {0, kWidth - 1}) {
    const auto* pixel = pixels.Row(kHeight - 1) + std::ptrdiff_t{x} * 3;
    const int strong = x == 0 ? red : 2 - red;
    EXPECT_NEAR(std::to_integer<int>(pixel[strong]), 0xe0, 3) << x;
    EXPECT_NEAR(std::to_integer<int>(pixel[2 - strong]), 0, 3) << x;
  }
}

struct Case {
  const char* name;
  WrittenFormat format;
  int bytesPerSample;
};
constexpr Case kCases[] = {{"a.jpg", WrittenFormat::Jpeg, 1},     {"b.jp2", WrittenFormat::Jpeg2000, 1},
                           {"c.jp2", WrittenFormat::Jpeg2000, 2}, {"d.png", WrittenFormat::Png, 1},
                           {"e.png", WrittenFormat::Png, 2},      {"f.tif", WrittenFormat::Tiff, 1},
                           {"g.tif", WrittenFormat::Tiff, 2}};

void ExpectShootingData(const ExifData& data) {
  EXPECT_EQ(data.make, "Canon");
  EXPECT_EQ(data.model, "Canon EOS D60");
  EXPECT_EQ(data.shutterSpeed, "1/250");
  EXPECT_EQ(data.aperture, "2.8");
  EXPECT_EQ(data.iso, "400");
  EXPECT_EQ(data.dateTime, "2003:05:17 10:11:12");
  EXPECT_EQ(platform::TrimRight(data.comment), "Over the hill");
  EXPECT_EQ(data.imageNumber, 1'234'567);  // in the private note
  EXPECT_TRUE(data.orientation == 0 || data.orientation == 1);
}

TEST(WrittenFiles, ReadBackWithAllThatTravels) {
  const test::TempDir dir;
  const auto path = dir.Write("source.jpg", Source());
  const auto profile = test::EncodeProfile({.name = "Chosen"});
  const auto blocks = ReadMetadataBlocks(path, dir.Write("p.icc", profile), {}, {});
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const auto written = dir / c.name;
    WriteImage(c.format, Halves(c.bytesPerSample), blocks, written, {.quality = 100, .resolution = 240});
    ExpectHalves(ReadBack(written));
    EXPECT_EQ(ReadEmbeddedProfile(written), BytesOf(profile));
    const ExifData data(written);
    EXPECT_EQ(data.imageWidth, kWidth);
    EXPECT_EQ(data.imageHeight, kHeight);
    ASSERT_EQ(data.iptc.size(), 2U);
    EXPECT_EQ(data.iptc[0], (metadata::IptcItem{2, 25, "hill"}));
    ExpectShootingData(data);
  }
}

TEST(WrittenFiles, JpegDescribesItsOwnPicture) {
  const test::TempDir dir;
  const auto path = dir.Write("source.jpg", Source());
  WriteImage(WrittenFormat::Jpeg, Halves(1), ReadMetadataBlocks(path, dir.Write("broken.icc", "profile?"), {}, {}),
             dir / "a.jpg", {.resolution = 240});
  const auto file = test::ReadAll(dir / "a.jpg").value();
  EXPECT_EQ(file.substr(0, 24),
            std::string("\xff\xd8\xff\xe0\0\x10JFIF\0\1\1\1\0\xf0\0\xf0\0\0\xff\xe1", 22) + file.substr(22, 2));
  EXPECT_NE(file.find("kept"), std::string::npos);  // the XMP packet
  EXPECT_EQ(ReadEmbeddedProfile(dir / "a.jpg"), BytesOf(test::EncodeProfile({.name = "Own"})));
  const platform::ReadableFile opened(dir / "a.jpg");
  const metadata::FileSource source(opened);
  const auto thumbnails = metadata::FindExifThumbnails(source);
  ASSERT_EQ(thumbnails.size(), 1U);
  const auto thumbnail = imaging::DecodeJpeg(
                             source, thumbnails.front(), [](int, int) { return 8; }, imaging::PixelOrder::Rgb)
                             .pixels;
  EXPECT_EQ(thumbnail.width, 160);
  EXPECT_EQ(thumbnail.height, 96);
  EXPECT_NEAR(std::to_integer<int>(thumbnail.Row(50)[0]), 0xe0, 12);
}

TEST(WrittenFiles, SourceOfMetadataFollowsTheName) {
  const test::TempDir dir;
  dir.Write("A.THM", test::WithExif(test::EncodeJpeg(test::PaintPlain(16, 16, 0)), {.make = "Thm"}));
  const auto makeIn = [](const imaging::MetadataBlocks& blocks) -> std::string {
    const std::string exif(reinterpret_cast<const char*>(blocks.exif.data()), blocks.exif.size());
    return exif.find("Thm") != std::string::npos ? "Thm" : exif.find("Owner") != std::string::npos ? "Owner" : "";
  };
  const auto photo = test::MakePhoto({.make = "Owner"});
  const std::pair<std::string, const char*> cases[] = {
      {dir.Write("a.tif", test::TiffBlock({.make = "Owner"})), "Thm"},
      {dir.Write("b.tif", test::TiffBlock({.make = "Owner"})), "Owner"},  // built from the record
      {dir.Write("a.jpg", photo), "Owner"},
      {dir / "missing.tif", ""}};
  for (const auto& [path, make] : cases) EXPECT_EQ(makeIn(ReadMetadataBlocks(path, "", {}, {})), make) << path;
  EXPECT_FALSE(ReadMetadataBlocks("", "", {}, {}).shooting);
}

TEST(WrittenFiles, PrivateNotesAreTrueAtTheirNewPlace) {
  const std::pair<const char*, test::TiffBuilder> notes[] = {
      {"turned", test::WithBareNikonNote(test::NikonNoteDirectory(test::Endian::Big))},
      {"with a header of its own", test::WithNikonNote(test::NikonNoteDirectory(test::Endian::Big))}};
  for (const auto& [form, source] : notes) {
    const test::TempDir dir;
    const auto path = dir.Write("a.tif", source.Build());
    WriteImage(WrittenFormat::Tiff, Halves(1), ReadMetadataBlocks(path, "", {}, {}), dir / "b.tif", {});
    const ExifData data(dir / "b.tif");
    EXPECT_EQ(data.sharpness, "HARD") << form;
    EXPECT_EQ(std::pair(data.imageWidth, data.userRotation), std::pair(kWidth, 270)) << form << ": turned already";
  }
}

}  // namespace
}  // namespace ml::imagefiles
