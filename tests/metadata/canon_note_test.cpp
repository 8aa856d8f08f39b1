#include "metadata/canon/canon_note.h"

#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_files.h"
#include "support/canon_builder.h"
#include "support/ciff_builder.h"

namespace ml::metadata {
namespace {

using namespace std::string_literals;
using test::CanonArray;
using test::CanonNote;
using test::Endian;
using test::TiffBuilder;

class CanonFile : public test::ExifFiles {
 protected:
  ExifData Write(const std::string& name, const TiffBuilder& note, Endian order = Endian::Little) {
    auto exif = TiffBuilder(order).Rational(37386, 35).Note(37500, "", note).Undefined(37510, "ASCII\0\0\0behind"s);
    const auto tiff = TiffBuilder(order).Ascii(271, "Canon").Ascii(272, "Canon EOS 10D").Directory(34665, exif);
    return Read(name, tiff);
  }
};

TEST_F(CanonFile, TellsTheSameInBothFormsAndByteOrders) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const auto* name : {"a.jpg", "a.tif"}) {
      SCOPED_TRACE(name);
      const auto data = Write(name, CanonNote(), order);
      EXPECT_EQ(data.selfTimer, 10);
      EXPECT_EQ(data.imageQuality, "Raw");
      EXPECT_EQ(data.driveMode, "Continuous frame: 3");
      EXPECT_EQ(data.contrast, "High");
      EXPECT_EQ(data.lensMaxFocal, 300);
      EXPECT_EQ(data.tone, "+2");
      EXPECT_EQ(data.focalLength, 100) << "the standard's tag stands before the note";
      EXPECT_EQ(data.exposureCompensation, -1);
      EXPECT_EQ(data.whiteBalance, "Color temp=5200K");
      EXPECT_EQ(data.focusPoint, "[Center]");
      EXPECT_EQ(data.subjectDistance, 1.42);
      EXPECT_EQ(data.firmware, "Firmware Version 1.0.2");
      EXPECT_EQ(data.imageNumber, 1234567);
      EXPECT_EQ(data.owner, "A. Photographer");
      EXPECT_EQ(data.bodySerial, "0560018150");
      EXPECT_EQ(data.customFunctions, "Custom Functions:\nCFn 2: Shutter release w/o CF card: Not possible");
      EXPECT_EQ(data.stitchShot, 8);
      EXPECT_EQ(data.colorSpace, std::string(name) == "a.jpg" ? "AdobeRGB" : "");
      EXPECT_EQ(data.comment, "behind");
    }
  }
}

TEST_F(CanonFile, OnlyAFileLimitsTheNumberOfEntries) {
  EXPECT_EQ(Write("a.jpg", CanonNote().FillTo(101)).imageNumber, 1234567);
  EXPECT_EQ(Write("a.tif", CanonNote().FillTo(100)).imageNumber, 1234567);
  const auto tooMany = Write("b.tif", CanonNote().FillTo(101));
  EXPECT_EQ(tooMany.imageNumber, 0);
  EXPECT_EQ(tooMany.comment, "behind") << "the note costs only itself";
}

TEST_F(CanonFile, AnArrayThatIsNotThereEndsTheNoteOnly) {
  const auto damaged = CanonNote().Without(4).Raw(4, 3, 33, 0x7fffffff);
  for (const auto* name : {"a.jpg", "a.tif"}) {
    SCOPED_TRACE(name);
    const auto data = Write(name, damaged);
    EXPECT_EQ(data.imageQuality, "Raw");
    EXPECT_EQ(data.focalLength, 100);
    EXPECT_EQ(data.imageNumber, 0) << "behind the damage";
    EXPECT_EQ(data.comment, "behind");
    EXPECT_FALSE(data.exifInvalid);
    EXPECT_EQ(Write(name, CanonNote().Without(4).Raw(4, 3, 0xffffffff, 8)).imageQuality, "Raw");
  }
}

TEST_F(CanonFile, ATextThatLeavesItsBlockIsEmpty) {
  const auto data = Write("a.jpg", CanonNote().Without(7).Raw(7, 2, 0xffffffff, 8));
  EXPECT_EQ(data.firmware + data.owner, "A. Photographer");
}

TEST_F(CanonFile, OtherTypesAndCountsArePassedOver) {
  const auto note = TiffBuilder()
                        .Long(1, {8, 0, 0, 4})
                        .Short(2, {4, 50})
                        .Bytes(7, "Revision 1")
                        .Short(8, 77)
                        .Long(12, {1, 2})
                        .Long(180, 2);
  const auto data = Write("a.jpg", note);
  EXPECT_EQ(data.imageQuality, "");
  EXPECT_EQ(data.focalLength, 35);
  EXPECT_EQ(data.firmware + data.bodySerial + data.colorSpace, "");
  EXPECT_EQ(data.imageNumber, 0);
}

TEST_F(CanonFile, HeapsOfACrwTellTheSame) {
  test::CameraRaw camera{.width = 32, .height = 16, .previewWidth = 64, .previewHeight = 32, .orientation = 6};
  camera.model = "Canon EOS 10D";
  for (const auto order : {Endian::Little, Endian::Big}) {
    camera.order = order;
    const auto alone = Read("CRW_1.crw", test::CrwHeap(camera).BuildFile(order));
    EXPECT_EQ(alone.model, "Canon EOS 10D");
    EXPECT_EQ(alone.firmware, "Firmware Version 1.00");
    EXPECT_EQ(alone.owner, "A. Photographer");
    EXPECT_EQ(alone.bodySerial, "0305465770");
    EXPECT_EQ(alone.comment, "A comment");
    EXPECT_EQ(alone.imageQuality, "Fine");
    EXPECT_EQ(alone.focalLength, 35);
    EXPECT_EQ(alone.lensMaxFocal, 70);
    EXPECT_EQ(alone.exposureCompensation, -0.625);
    EXPECT_EQ(alone.whiteBalance, "Color temp=5200K");
    EXPECT_EQ(alone.colorSpace, "sRGB");
    EXPECT_EQ(alone.stitchShot, 4);
    EXPECT_EQ(alone.iso, "100");
    EXPECT_EQ(alone.aperture, "5.7");
    EXPECT_EQ(alone.shutterSpeed, "5");
    EXPECT_EQ(alone.customFunctions, "Custom Functions:\nCFn 12: Mirror lockup: Enable");
    EXPECT_EQ(alone.imageWidth, 16) << "upright";
    EXPECT_EQ(alone.imageHeight, 32);
  }
}

}  // namespace
}  // namespace ml::metadata
