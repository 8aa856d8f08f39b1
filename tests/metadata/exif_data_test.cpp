#include "metadata/exif_data.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>
#include <string>

#include "metadata/exif_files.h"
#include "platform/dates.h"
#include "platform/file_status.h"
#include "support/ciff_builder.h"

namespace ml::metadata {
namespace {

using namespace std::string_literals;
using test::CameraExif;
using test::Endian;
using test::ExifSegment;
using test::MarkerJpeg;
using test::TiffBuilder;

class ExifRecord : public test::ExifFiles {
 protected:
  ExifData Jpeg(const std::string& segments) { return Read("a.jpg", MarkerJpeg(segments)); }
  ExifData Jpeg(const TiffBuilder& tiff, const ExifOptions& options = {}) { return Read("a.jpg", tiff, options); }
};

std::string TextAt(const ExifData& data, std::uint32_t place, std::uint32_t size) {
  return {reinterpret_cast<const char*>(data.exifBlock.data()) + place, size};
}

TEST_F(ExifRecord, TellsWhatBothReadersFindInEitherByteOrder) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto tiff = CameraExif(order);
    for (const auto& data : {Jpeg(tiff), Read("a.tif", tiff.Build())}) {
      SCOPED_TRACE(data.path + (order == Endian::Big ? " big-endian" : ""));
      EXPECT_EQ(data.make, "Tarnwick");
      EXPECT_EQ(data.model, "Sample 1");
      EXPECT_EQ(data.software, "Version 1.2");
      EXPECT_EQ(data.owner, "A. Photographer");
      EXPECT_EQ(data.copyright, "All rights");
      EXPECT_EQ(data.imageDescription, "A description");
      EXPECT_EQ(data.comment, "A comment  ");
      EXPECT_EQ(data.orientation, 6);
      EXPECT_EQ(data.dateTime, "2003:05:17 10:11:12");
      EXPECT_EQ(data.dateTimeOriginal, "2003:05:17 10:11:12");
      EXPECT_EQ(data.dateTimeDigitized, "2003:05:17 10:11:13");
      EXPECT_EQ(platform::ExifDateText(data.shootingTime), "2003:05:17 10:11:12");
      EXPECT_EQ(data.shutterSpeed, "1/250");
      EXPECT_EQ(data.aperture, "2.8");
      EXPECT_EQ(data.exposureMode, "Av");
      EXPECT_EQ(data.iso, "200");
      EXPECT_DOUBLE_EQ(data.exposureCompensation, -1.0 / 3);
      EXPECT_DOUBLE_EQ(data.subjectDistance, 0.652);
      EXPECT_EQ(data.meteringMode, "Multi-segment");
      EXPECT_EQ(data.whiteBalance, "Cloudy");
      EXPECT_EQ(data.flash, "Auto + Red-eye reduction");
      EXPECT_DOUBLE_EQ(data.focalLength, 18.2);
      EXPECT_EQ(data.focalLength35, 29);
      EXPECT_EQ(data.contrast + data.saturation + data.sharpness, "LowHighNormal");
      EXPECT_EQ(data.littleEndian, order == Endian::Little);
      EXPECT_EQ(data.ifd0EntryCount, 9U);
      EXPECT_EQ(data.exifIfdEntryCount, 21U);
      EXPECT_FALSE(data.exifInvalid);
    }
  }
}

TEST_F(ExifRecord, TheTwoReadersHonourDifferentTags) {
  auto tiff = CameraExif();
  tiff.Long(256, 100)
      .Long(257, 50)
      .Short(277, 3)
      .Rational(37386, 50)
      .Ascii(315, "Second")
      .Undefined(34675, "icc profile");
  const auto block = Jpeg(tiff), file = Read("a.tif", tiff.Build());
  EXPECT_EQ(block.isoShort, 200);
  EXPECT_EQ(file.isoShort, 0);
  EXPECT_DOUBLE_EQ(block.maxAperture, 2.8284271247461903);
  EXPECT_EQ(file.maxAperture, 0);
  EXPECT_TRUE(block.hasTotalExposureCompensation);
  EXPECT_DOUBLE_EQ(block.totalExposureCompensation, -1.0 / 3);
  EXPECT_FALSE(file.hasTotalExposureCompensation);
  EXPECT_EQ(block.imageWidth, 3072);
  EXPECT_EQ(file.imageWidth, 100);
  EXPECT_EQ(file.imageHeight, 50);
  EXPECT_EQ(block.samplesPerPixel, 0);
  EXPECT_EQ(file.samplesPerPixel, 3);
  EXPECT_EQ(block.digitalZoom, "");
  EXPECT_EQ(file.digitalZoom, "2.0x");
  EXPECT_EQ(block.owner, "A. Photographer") << "the first owner stays";
  EXPECT_EQ(file.owner, "Second") << "the last owner wins";
  EXPECT_FALSE(block.hasIccProfile);
  EXPECT_TRUE(file.hasIccProfile);
  const auto only = TiffBuilder().Rational(37386, 50).Rational(33437, 4);
  EXPECT_EQ(Jpeg(only).focalLength, 0) << "the first directory of a block holds no exposure";
  EXPECT_EQ(Read("b.tif", only.Build()).focalLength, 50);
}

TEST_F(ExifRecord, ApexValuesStandInOnlyWhereNothingBetterIs) {
  const auto apex = TiffBuilder().SignedRational(37377, 8).Rational(37378, 4);
  auto both = apex;
  both.Rational(33434, 1, 60).Rational(33437, 8);
  EXPECT_EQ(Jpeg(TiffBuilder().Directory(34665, apex)).shutterSpeed, "1/256");
  EXPECT_EQ(Jpeg(TiffBuilder().Directory(34665, apex)).aperture, "4.0");
  EXPECT_EQ(Jpeg(TiffBuilder().Directory(34665, both)).shutterSpeed, "1/60");
  EXPECT_EQ(Jpeg(TiffBuilder().Directory(34665, both)).aperture, "8.0");
  EXPECT_EQ(Read("a.tif", TiffBuilder().Directory(34665, apex).Build()).shutterSpeed, "");
}

TEST_F(ExifRecord, KeepsThePlacesOfTextsThatCanBeOverwritten) {
  const auto tiff = CameraExif();
  const auto block = Jpeg(tiff);
  EXPECT_EQ(block.exifBlock.size(), tiff.Build().size() + 8);
  EXPECT_EQ(TextAt(block, block.userCommentPtr, block.userCommentSize), "ASCII\0\0\0A comment  "s);
  EXPECT_EQ(TextAt(block, block.imageDescriptionPtr, block.imageDescriptionCount), "A description  \0"s);
  EXPECT_EQ(block.userCommentOffset + block.imageDescriptionOffset, 0U);

  const auto bytes = tiff.Build();
  const auto file = Read("a.tif", bytes);
  EXPECT_EQ(bytes.substr(file.userCommentOffset, file.userCommentCount), "ASCII\0\0\0A comment  "s);
  EXPECT_EQ(bytes.substr(file.imageDescriptionOffset, file.imageDescriptionCount), "A description  \0"s);
  EXPECT_EQ(file.userCommentPtr + file.imageDescriptionPtr, 0U);

  const auto shortComment = TiffBuilder().Directory(34665, TiffBuilder().Undefined(37510, "12345678"));
  EXPECT_EQ(Jpeg(shortComment).userCommentPtr, 0U);
  EXPECT_EQ(Jpeg(shortComment).comment, "12345678");
  const auto outside = TiffBuilder().Ascii(271, "padding of the block").Raw(270, 2, 4000, 60);
  EXPECT_EQ(Jpeg(outside).imageDescriptionPtr, 0U);
}

TEST_F(ExifRecord, BlocksHaveNoLimitButTheirEnd) {
  auto tiff = TiffBuilder().Ascii(271, "Tarnwick").FillTo(300).Ascii(65000, "behind");
  tiff.Next(TiffBuilder().Ascii(272, "of the thumbnail"));
  EXPECT_EQ(Jpeg(tiff).make, "Tarnwick");
  EXPECT_EQ(Jpeg(tiff).model, "") << "the second directory was read";
  EXPECT_EQ(Jpeg(TiffBuilder().Ascii(272, "abc").Ascii(271, "Tarnwick")).model, "") << "a text inside its entry";
}

TEST_F(ExifRecord, BlocksThatEndTooEarlyKeepWhatWasThere) {
  const auto block = TiffBuilder().Short(274, 6).Short(305, 1).Ascii(306, "2003:05:17 10:11:12").Build();
  const auto cut = std::string("Exif\0\0", 6) + block.substr(0, 8 + 2 + 12 + 5);
  const auto icc = test::JpegSegment(0xe2, "ICC_PROFILE\0\1\1"s);
  const auto data = Jpeg(test::JpegSegment(0xe1, cut) + icc);
  EXPECT_EQ(data.orientation, 6);
  EXPECT_TRUE(data.exifInvalid);
  EXPECT_FALSE(data.hasIccProfile) << "went on behind the damage";
  EXPECT_EQ(data.imageWidth, 640) << "later steps were left out";
  EXPECT_FALSE(Jpeg(icc).exifInvalid);
  EXPECT_TRUE(Jpeg(icc).hasIccProfile);
  for (const auto& quiet : {"Exif\0\0XX*\0\x08\0\0\0"s, "Exif\0\0II+\0\x08\0\0\0"s, "Exif\0\0II*\0\0\1\0\0"s}) {
    EXPECT_FALSE(Jpeg(test::JpegSegment(0xe1, quiet)).exifInvalid) << "too short to be read";
  }
  EXPECT_FALSE(Jpeg(test::JpegSegment(0xe1, "Exif\0\0XX*\0\x08\0\0\0"s + std::string(40, 'x'))).exifInvalid);
  EXPECT_TRUE(Jpeg(test::JpegSegment(0xe1, "Exif\0\0II*\0\0\1\0\0"s + std::string(40, 'x'))).exifInvalid);
}

TEST_F(ExifRecord, OfSeveralBlocksTheFirstCounts) {
  const auto first = ExifSegment(TiffBuilder().Ascii(271, "The first make"));
  const auto second = ExifSegment(TiffBuilder().Ascii(271, "The other make").Ascii(272, "Its model"));
  const auto data = Jpeg(first + second);
  EXPECT_EQ(data.make, "The first make");
  EXPECT_EQ(data.model, "");
}

TEST_F(ExifRecord, SidesOfJpegs) {
  EXPECT_EQ(Jpeg("").imageWidth, 640);
  EXPECT_EQ(Jpeg("").imageHeight, 480);
  const std::map<int, int> shownWidths = {{1, 640}, {3, 640}, {6, 480}, {8, 480}};
  for (const auto& [orientation, width] : shownWidths) {
    const auto tiff = TiffBuilder().Short(274, static_cast<std::uint32_t>(orientation)).Ascii(271, "Tarnwick");
    EXPECT_EQ(Jpeg(tiff).imageWidth, 640) << orientation;
    EXPECT_EQ(Jpeg(tiff, {.useJpegExifOrientation = true}).imageWidth, width) << orientation;
  }
}

TEST_F(ExifRecord, DatesOfFilesStandInForDatesThatAreNone) {
  struct Case {
    const char* text;
    const char* time;  ///< "" is that of the file
  };
  const Case cases[] = {{"2003:10:04 12:30:00", "2003:10:04 12:30:00"},
                        {"2003:10:04 12.30.00", "2003:10:04 12:30:00"},
                        {"1969:10:04 12:30:00", ""},
                        {"2038:10:04 12:30:00", ""},
                        {"2003:13:04 12:30:00", ""},
                        {"    :  :     :  :  ", ""}};
  const std::string changed = "2001:02:03 04:05:06";
  for (const auto& c : cases) {
    const auto path = dir.Write("a.jpg", MarkerJpeg(ExifSegment(TiffBuilder().Ascii(306, c.text))));
    platform::SetModificationTime(path, *platform::ToTime(*platform::ParseDateTime(changed)) * 1'000'000'000);
    const ExifData data(path);
    EXPECT_EQ(data.dateTime, c.text);
    EXPECT_EQ(platform::ExifDateText(data.shootingTime), *c.time == '\0' ? changed : c.time) << c.text;
  }
  const auto plain = dir.Write("b.gif", "no date");
  EXPECT_EQ(ExifData(plain).dateTime, platform::ExifDateText(ExifData(plain).shootingTime));
  const auto digitised = TiffBuilder().Directory(34665, TiffBuilder().Ascii(36868, "2003:05:17 10:11:13"));
  EXPECT_EQ(Jpeg(digitised).dateTime, "2003:05:17 10:11:13");
}

TEST_F(ExifRecord, CanonModelsKeepOnlyWhatTheyMean) {
  struct Case {
    const char* make;
    const char* model;
    const char* contrast;
  };
  const Case cases[] = {{"Canon", "Canon EOS 10D", "High"},
                        {"Canon", "Canon PowerShot S45", "High"},
                        {"Canon", "Canon EOS-1D", ""},
                        {"Canon", "Canon PowerShot A640", ""},
                        {"Tarnwick", "Canon PowerShot A640", "High"},
                        {"Canon Inc.", "Canon EOS-1D", "High"}};
  for (const auto& c : cases) {
    const auto exif = TiffBuilder().Short(41992, 2).Short(41993, 2).Short(41994, 2);
    const auto data = Jpeg(TiffBuilder().Ascii(271, c.make).Ascii(272, c.model).Directory(34665, exif));
    EXPECT_EQ(data.contrast, c.contrast) << c.make << " " << c.model;
    EXPECT_EQ(data.contrast, data.saturation);
    EXPECT_EQ(data.contrast, data.sharpness);
  }
}

TEST_F(ExifRecord, FirmwareIsLookedForAtTheEndOfCanonFiles) {
  const auto canon = ExifSegment(TiffBuilder().Ascii(271, "Canon").Ascii(272, "Canon EOS D30"));
  const auto other = ExifSegment(TiffBuilder().Ascii(271, "Tarnwick").Ascii(272, "Canon EOS D30"));
  const auto tail = std::string(5000, 'x') + "Firmware Version 1.0.1\0 and more"s;
  EXPECT_EQ(Read("a.jpg", MarkerJpeg(canon) + tail).firmware, "Firmware Version 1.0.1");
  EXPECT_EQ(Read("a.jpg", MarkerJpeg(canon) + "Firmware that has a long name").firmware, "Firmware that has a long");
  EXPECT_EQ(Read("a.jpg", MarkerJpeg(canon) + tail + std::string(10'240, 'x')).firmware, "");
  EXPECT_EQ(Read("a.jpg", MarkerJpeg(other) + tail).firmware, "");
}

TEST_F(ExifRecord, NumbersOfAnEos1DStandInTheName) {
  const auto jpeg = MarkerJpeg(ExifSegment(TiffBuilder().Ascii(271, "Canon").Ascii(272, "Canon EOS-1DS")));
  EXPECT_EQ(Read("ABCD0042.JPG", jpeg).imageNumber, 42);
  EXPECT_EQ(Read("x123.jpg", jpeg).imageNumber, 0);
  EXPECT_EQ(Read("123.jpg", jpeg).imageNumber, 0);
}

TEST_F(ExifRecord, MissingAndForeignFiles) {
  const ExifData missing(dir / "gone.jpg");
  EXPECT_EQ(missing.path, dir / "gone.jpg");
  EXPECT_EQ(missing.displayPath + missing.dateTime, "");
  EXPECT_FALSE(missing.exifInvalid);
  const auto foreign = Read("a.xyz", "1234567");
  EXPECT_EQ(foreign.fileSize, 7U);
  EXPECT_NE(foreign.dateTime, "");
  EXPECT_TRUE(Read("a.psd", "no such file").exifInvalid);
  ASSERT_EQ(::mkfifo((dir / "fifo.jpg").c_str(), 0600), 0);
  EXPECT_EQ(ExifData(dir / "fifo.jpg").imageWidth, 0) << "a pipe is not opened";
}

TEST_F(ExifRecord, CompanionsStandInForFilesThatHoldNoData) {
  const auto thm = MarkerJpeg(ExifSegment(CameraExif()));
  dir.Write("MVI_1.THM", thm);
  const auto movie = Read("MVI_1.avi", "RIFF");
  EXPECT_EQ(movie.model, "Sample 1");
  EXPECT_EQ(movie.imageWidth, 0) << "the size is the companion's";
  EXPECT_EQ(movie.displayPath, dir / "MVI_1.avi");
  EXPECT_EQ(Read("MVI_2.avi", "RIFF").model, "");

  const test::CameraRaw raw{.width = 32, .height = 16, .previewWidth = 64, .previewHeight = 32, .orientation = 6};
  const auto crw = test::CrwHeap(raw).BuildFile(Endian::Little);
  const auto alone = Read("CRW_1.crw", crw);
  EXPECT_EQ(alone.make, "Canon");
  EXPECT_EQ(alone.userRotation, 90);
  EXPECT_GT(alone.imageNumber, 0);
  EXPECT_EQ(alone.dateTime, raw.dateTime);
  EXPECT_FALSE(alone.exifInvalid);

  dir.Write("CRW_2.thm", thm);
  const auto withThm = Read("CRW_2.CRW", crw);
  EXPECT_EQ(withThm.model, "Sample 1");
  EXPECT_EQ(withThm.make, "Canon");
  EXPECT_EQ(withThm.imageNumber, alone.imageNumber);
  EXPECT_EQ(withThm.dateTime, "2003:05:17 10:11:12");
  EXPECT_EQ(withThm.shutterSpeed, "1/250") << "the companion's stands before the heaps'";
  EXPECT_EQ(withThm.customFunctions, alone.customFunctions);
  EXPECT_EQ(withThm.imageWidth, 16) << "the heaps know that of the picture";

  dir.Write("CRW_3.thm", "\xff\xd8" + test::JpegSegment(0xe1, "Exif\0\0II*\0\0\1\0\0"s + std::string(40, 'x')));
  EXPECT_TRUE(Read("CRW_3.crw", crw).exifInvalid);
  EXPECT_TRUE(Read("CRW_4.crw", "no heap").exifInvalid);
}

}  // namespace
}  // namespace ml::metadata
