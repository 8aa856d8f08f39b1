#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_files.h"
#include "support/camera_raw.h"
#include "support/metadata_blocks.h"

/// The rules by which files of TIFF structure differ from blocks, and from each other.
namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

using ExifTiff = test::ExifFiles;

TEST_F(ExifTiff, DirectoriesHaveLimits) {
  const auto make = TiffBuilder(Endian::Big).Ascii(271, "NIKON CORPORATION");
  EXPECT_EQ(Read("a.nef", TiffBuilder(make).FillTo(70)).make, "NIKON CORPORATION");
  const auto large = Read("a.nef", TiffBuilder(make).FillTo(71));
  EXPECT_EQ(large.make, "");
  EXPECT_FALSE(large.exifInvalid) << "a broken TIFF bears no mark";

  const auto exif = TiffBuilder(Endian::Big).Short(34855, 400);
  const auto withExif = [&](std::size_t entries) {
    return Read("a.tif", TiffBuilder(make).Directory(34665, TiffBuilder(exif).FillTo(entries)));
  };
  EXPECT_EQ(withExif(50).iso, "400");
  EXPECT_EQ(withExif(51).iso, "");
  EXPECT_EQ(withExif(51).make, "NIKON CORPORATION") << "what stood in front of the limit";
}

TEST_F(ExifTiff, SubDirectoriesGiveTheTrueSize) {
  const auto size = [](std::uint32_t width, std::size_t entries) {
    return TiffBuilder(Endian::Big).Long(256, width).Long(257, width / 2).FillTo(entries);
  };
  const auto thumbnail = size(160, 2);
  EXPECT_EQ(Read("a.nef", TiffBuilder(thumbnail).SubDirectories({size(3000, 39)})).imageWidth, 3000);
  EXPECT_EQ(Read("a.nef", TiffBuilder(thumbnail).SubDirectories({size(3000, 40)})).imageWidth, 160);
  EXPECT_EQ(Read("a.nef", TiffBuilder(thumbnail).SubDirectories({size(3000, 5), size(2000, 5)})).imageHeight, 1500);
  const auto preview = TiffBuilder(Endian::Big).Short(254, 1).Long(513, 100);
  EXPECT_EQ(Read("a.nef", TiffBuilder(thumbnail).SubDirectories({preview, size(3000, 5)})).imageWidth, 3000);
  const auto behind = TiffBuilder(thumbnail).SubDirectories({size(3000, 40)}).Ascii(33432, "All rights");
  EXPECT_EQ(Read("a.nef", behind).copyright, "All rights") << "a sub-directory that is passed over is no error";
}

TEST_F(ExifTiff, MagicNumberCountsOutsideOrf) {
  const auto tiff = TiffBuilder().Ascii(271, "OLYMPUS").Magic(0x4f52);
  EXPECT_EQ(Read("a.ORF", tiff).make, "OLYMPUS");
  EXPECT_EQ(Read("a.tif", tiff).make, "");
  EXPECT_EQ(Read("a.orf", "XX" + tiff.Build().substr(2)).make, "");
}

TEST_F(ExifTiff, OnlySomeOffsetsCountFromAHeaderInside) {
  const auto exif = TiffBuilder(Endian::Big).Rational(33434, 1, 60).Ascii(36867, "2003:05:17 10:11:12");
  const auto tiff = TiffBuilder(Endian::Big).Ascii(271, "Tarnwick").Rational(33437, 8).Directory(34665, exif);
  for (const auto& [name, base] : {std::pair{"a.mrw", 48U}, {"a.raf", 120U}}) {
    const auto data = Read(name, std::string(base, '\0') + tiff.Build());
    EXPECT_EQ(data.make, "Tarnwick") << name;
    EXPECT_EQ(data.dateTimeOriginal, "2003:05:17 10:11:12") << name;
    EXPECT_EQ(data.shutterSpeed, "1/60") << name;
    EXPECT_NE(data.aperture, "8.0") << name << ": numbers of the first directory count from the file's start";
    EXPECT_EQ(Read(name, tiff).make, "") << name;
  }
  EXPECT_EQ(Read("a.pef", tiff).aperture, "8.0");
}

TEST_F(ExifTiff, RafFilesOfEitherKindTellTheirCamera) {
  const test::CameraRaw raw{.width = 32, .height = 24, .previewWidth = 16, .previewHeight = 12, .orientation = 6};
  for (const std::size_t head : {108, 148}) {
    const auto data = Read("a.raf", test::RafFile(raw, test::RafDirectories(raw), head));
    EXPECT_EQ(data.model, "FinePixS2Pro") << head;
    EXPECT_EQ(data.orientation, 6) << head;
    EXPECT_EQ(data.shutterSpeed, "1/125") << head;
    EXPECT_EQ(data.iso, "200") << head;
  }
}

TEST_F(ExifTiff, MakerNotesHaveTheirPlaceKept) {
  const auto exif = TiffBuilder().Undefined(37500, "a private note");
  const auto bytes = TiffBuilder().Directory(34665, exif).Build();
  const auto data = Read("a.tif", bytes);
  EXPECT_EQ(bytes.substr(data.makerNoteOffset, data.makerNoteCount), "a private note");
}

TEST_F(ExifTiff, LargeBlocksCountOnceInADirectory) {
  const auto note = [](const char* owner) { return TiffBuilder().Ascii(9, owner); };
  const auto iptc = [](const char* caption) { return test::IptcBlock({{120, caption}}); };
  const auto exif = TiffBuilder()
                        .Note(37500, "", note("A"))
                        .Note(37500, "", note("B"))
                        .Undefined(37510, "first")
                        .Undefined(37510, "second");
  const auto data = Read("a.tif", TiffBuilder()
                                      .Ascii(271, "Canon")
                                      .Bytes(700, "<tiff:Model>A</tiff:Model>")
                                      .Bytes(700, "<aux:SerialNumber>B</aux:SerialNumber>")
                                      .Bytes(33723, iptc("A"))
                                      .Bytes(33723, iptc("B"))
                                      .Directory(34665, exif));
  EXPECT_EQ(std::tuple(data.owner, data.model, data.bodySerial, data.comment), std::tuple("A", "A", "", "first"));
  EXPECT_EQ(data.iptc, (std::vector<IptcItem>{{2, 120, "A"}}));
}

TEST_F(ExifTiff, LargeFilesWithSmallPicturesAreSuspect) {
  const auto content = [](std::uint32_t width, const char* model) {
    return TiffBuilder(Endian::Big).Long(256, width).Long(257, width).Ascii(271, "Canon").Ascii(272, model).Build();
  };
  const auto grown = [](std::string bytes, std::size_t size) { return bytes.append(size - bytes.size(), '\0'); };
  struct Case {
    const char* name;
    std::uint32_t width;
    const char* model;
    std::size_t size;
    bool thumbnailOnly, eos1D;
  };
  const Case cases[] = {
      {"a.tif", 288, "Canon EOS-1DS", 1'638'401, true, true},   {"a.TIFF", 288, "Canon EOS-1D", 1'638'401, true, true},
      {"a.tif", 288, "Canon EOS-1D", 1'638'400, true, false},   {"a.tif", 290, "Canon EOS-1D", 1'638'401, true, false},
      {"a.tif", 288, "Canon EOS D60", 1'638'401, true, false},  {"a.tif", 300, "Canon EOS-1D", 1'638'401, false, false},
      {"a.tif", 299, "Canon EOS D60", 1'048'576, false, false}, {"a.nef", 288, "Canon EOS-1D", 1'638'401, true, false},
  };
  for (const auto& c : cases) {
    const auto data = Read(c.name, grown(content(c.width, c.model), c.size));
    EXPECT_EQ(data.tiffThumbnailOnly, c.thumbnailOnly) << c.name << c.width << c.model << c.size;
    EXPECT_EQ(data.isEos1DRaw, c.eos1D) << c.name << c.width << c.model << c.size;
  }
}

TEST_F(ExifTiff, TheSensorOfTheD1XHasCellsOfItsOwn) {
  const auto tiff = TiffBuilder(Endian::Big).Long(256, 4028).Long(257, 1324).Ascii(272, "NIKON D1X");
  EXPECT_EQ(Read("a.nef", tiff).imageWidth, 3008);
  EXPECT_EQ(Read("a.nef", tiff).imageHeight, 1960);
  EXPECT_EQ(Read("a.tif", tiff).imageWidth, 4028);
  EXPECT_EQ(Read("a.nef", test::NefDirectories({.width = 64, .height = 32})).imageWidth, 64);
}

}  // namespace
}  // namespace ml::metadata
