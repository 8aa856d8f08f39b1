#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_files.h"
#include "support/maker_notes.h"

namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

using NikonNote = test::ExifFiles;

void ExpectFieldsOfBothForms(const ExifData& data, Endian order) {
  EXPECT_EQ(data.iso, "800");
  EXPECT_EQ(data.isoShort, 800);
  EXPECT_EQ(data.imageQuality, "FINE");
  // The hue's adjustment is a signed short, too, and stands in the upper half of a big-endian entry.
  EXPECT_EQ(data.whiteBalance, order == Endian::Big ? "SUNNY-2+9" : "SUNNY-2");
  EXPECT_EQ(data.sharpness, "HARD");
  EXPECT_EQ(data.afMode, "AF-S");
  EXPECT_EQ(data.flash, "NORMAL");
  EXPECT_EQ(data.lensMinFocal, 18);
  EXPECT_EQ(data.lensMaxFocal, 70);
  EXPECT_EQ(data.userRotation, 270);
}

TEST_F(NikonNote, IsReadWithAndWithoutAHeadInFilesAndJpegs) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto directory = test::NikonNoteDirectory(order);
    for (const auto& tiff : {test::WithNikonNote(directory), test::WithBareNikonNote(directory)}) {
      SCOPED_TRACE(order == Endian::Big);
      const auto nef = Read("a.nef", tiff);
      ExpectFieldsOfBothForms(nef, order);
      EXPECT_EQ(nef.tone + nef.driveMode + nef.colorMode + nef.noiseReduction, "") << "asked for in JPEGs only";
      EXPECT_EQ(nef.hueAdjustment, 0);

      const auto jpeg = InJpeg(tiff);
      ExpectFieldsOfBothForms(jpeg, order);
      EXPECT_EQ(jpeg.tone, "AUTO");
      EXPECT_EQ(jpeg.driveMode, "Continuous");
      EXPECT_EQ(jpeg.colorMode, "Adobe RGB");
      EXPECT_EQ(jpeg.noiseReduction, "Fixed pattern");
      EXPECT_EQ(jpeg.hueAdjustment, 9);
    }
  }
}

TEST_F(NikonNote, HoldsFiftyEntries) {
  const auto note = [](std::size_t entries) {
    auto directory = TiffBuilder(Endian::Big).Ascii(0x04, "FINE   ").FillTo(entries);
    return test::WithNikonNote(directory);
  };
  EXPECT_EQ(InJpeg(note(50)).imageQuality, "FINE");
  EXPECT_EQ(Read("a.nef", note(50)).imageQuality, "FINE");
  for (const auto& data : {InJpeg(note(51)), Read("a.nef", note(51))}) {
    EXPECT_EQ(data.imageQuality, "");
    EXPECT_EQ(data.flash, "On");
    EXPECT_FALSE(data.exifInvalid);
  }
}

TEST_F(NikonNote, DamageCostsNoFieldOutsideIt) {
  const auto tiff = [](const TiffBuilder& exif) {
    return TiffBuilder().Ascii(271, "NIKON").Directory(34665, TiffBuilder(exif).Short(41989, 75));
  };
  const auto oldest = TiffBuilder().Undefined(37500, std::string("Nikon\0\1\0", 8) + std::string(40, '\1'));
  const auto outside = TiffBuilder().Raw(37500, 7, 100, 0x7fffffff);
  for (const auto& exif : {oldest, outside}) {
    EXPECT_EQ(InJpeg(tiff(exif)).focalLength35, 75);
    EXPECT_EQ(Read("a.nef", tiff(exif)).focalLength35, 75);
  }
}

TEST_F(NikonNote, FlashSyncAddsToTheStandardsTag) {
  struct Case {
    std::optional<std::uint32_t> fired;  ///< of the standard's tag
    const char* sync;
    const char* flash;
  };
  const Case cases[] = {{0, "NORMAL  ", "Off"},
                        {1, "NORMAL  ", "NORMAL"},
                        {1, "SLOW    ", "On"},
                        {1, "        ", "On"},
                        {std::nullopt, "      ", "Off"},
                        {std::nullopt, "SLOW   ", "SLOW"},
                        {std::nullopt, "NORMAL ", "NORMAL"}};
  for (const auto& c : cases) {
    auto exif = TiffBuilder().Note(37500, "", TiffBuilder().Ascii(0x08, c.sync));
    if (c.fired) exif.Short(37385, *c.fired);
    const auto tiff = TiffBuilder().Ascii(271, "NIKON").Directory(34665, exif);
    EXPECT_EQ(InJpeg(tiff).flash, c.flash) << c.sync;
    EXPECT_EQ(Read("a.nef", tiff).flash, c.flash) << c.sync;
  }
}

TEST_F(NikonNote, OddValues) {
  const auto read = [&](const TiffBuilder& note) { return InJpeg(test::WithNikonNote(note)); };
  const TiffBuilder empty(Endian::Big);
  EXPECT_EQ(read(TiffBuilder(empty).Short(0x02, {0, 0})).iso, "64") << "the standard's";
  EXPECT_EQ(read(TiffBuilder(empty).Ascii(0x05, "      ")).whiteBalance, "Fine weather");
  EXPECT_EQ(read(TiffBuilder(empty).Raw(0x0b, 8, 1, 0x00030000)).whiteBalance, "Fine weather+3");
  EXPECT_EQ(read(TiffBuilder(empty).Raw(0x0b, 8, 1, 0x80000000)).whiteBalance, "Fine weather-32768");
  EXPECT_EQ(read(TiffBuilder(empty).Bytes(0x89, "\x02")).driveMode, "Self-timer");
  EXPECT_EQ(read(TiffBuilder(empty).Short(0x89, 3)).driveMode, "");
  EXPECT_EQ(read(TiffBuilder(empty).Ascii(0x8d, "MODE3a  ")).colorMode, "sRGB 2");
  EXPECT_EQ(read(TiffBuilder(empty).Ascii(0x95, "OFF ")).noiseReduction, "OFF");
  EXPECT_EQ(read(TiffBuilder(empty).Raw(0x92, 8, 1, 0xfffd0000)).hueAdjustment, -3);
  EXPECT_EQ(read(TiffBuilder(empty).Rational(0x84, 50)).lensMaxFocal, 0);
}

TEST_F(NikonNote, UserRotationIsARightAngle) {
  struct Case {
    int stored, degrees;
  };
  for (const auto& [stored, degrees] :
       {Case{0, 0}, {90, 90}, {450, 90}, {-90, 270}, {-720, 0}, {-810, 0}, {5, 0}, {180, 180}}) {
    auto settings = std::string(0x559, '\x5a');
    settings += {static_cast<char>(stored & 0xff), static_cast<char>(stored >> 8 & 0xff)};
    const auto note = TiffBuilder(Endian::Big).Undefined(0xe01, settings);
    const auto tiff = test::WithNikonNote(note).Long(256, 3000).Long(257, 2000);
    const auto data = Read("a.nef", tiff);
    EXPECT_EQ(data.userRotation, degrees) << stored;
    EXPECT_EQ(data.imageWidth, degrees % 180 == 0 ? 3000 : 2000) << stored;
  }
  const auto cut = TiffBuilder(Endian::Big).Undefined(0xe01, std::string(0x55a, '\x5a')).Ascii(0xf00, "behind");
  EXPECT_EQ(Read("a.nef", test::WithNikonNote(cut)).userRotation, 0);
}

}  // namespace
}  // namespace ml::metadata
