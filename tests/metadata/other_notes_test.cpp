#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_files.h"
#include "support/maker_notes.h"

/// Notes of makers of which few values are shown.
namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

using OtherNotes = test::ExifFiles;

TEST_F(OtherNotes, Olympus) {
  const auto data = InJpeg(test::WithOlympusNote(test::OlympusNoteDirectory()));
  EXPECT_EQ(data.imageQuality, "HQ");
  EXPECT_EQ(data.macroFocus, "On");
  EXPECT_EQ(data.flash, "Fill");
  EXPECT_EQ(data.afMode, "Manual Focus");
  EXPECT_EQ(data.sharpness, "Hard");
  EXPECT_EQ(data.contrast, "Low");

  const auto tiff = test::WithOlympusNote(test::OlympusNoteDirectory());
  EXPECT_EQ(Read("a.orf", tiff).imageQuality, "") << "read in blocks only";
}

TEST_F(OtherNotes, OlympusWithAHeadThatTellsTheByteOrder) {
  const auto note = TiffBuilder(Endian::Big).Short(0x0201, 4);
  const auto bytes = note.BuildBehind(std::string("OLYMPUS\0MM\3\0", 12));
  const auto exif = TiffBuilder().Undefined(37500, bytes);
  EXPECT_EQ(InJpeg(TiffBuilder().Ascii(271, "OLYMPUS IMAGING").Directory(34665, exif)).imageQuality, "RAW/TIFF");
}

TEST_F(OtherNotes, Fuji) {
  const auto data = InJpeg(test::WithFujiNote(test::FujiNoteDirectory()));
  EXPECT_EQ(data.imageQuality, "NORMAL");
  EXPECT_EQ(data.sharpness, "Hard");
  EXPECT_EQ(data.whiteBalance, "Cloudy");
  EXPECT_EQ(data.saturation, "High");
  EXPECT_EQ(data.contrast, "Low");
  EXPECT_EQ(data.flash, "Red-eye reduction");
  EXPECT_EQ(data.macroFocus, "On");
  EXPECT_EQ(data.exposureMode, "Aperture priority");
}

TEST_F(OtherNotes, CasioIsBigEndianInAnyBlock) {
  const auto check = [](const ExifData& data) {
    EXPECT_EQ(data.exposureMode, "Portrait");
    EXPECT_EQ(data.imageQuality, "Fine");
    EXPECT_EQ(data.afMode, "Infinity");
    EXPECT_EQ(data.flash, "Red Eye Reduction");
    EXPECT_EQ(data.whiteBalance, "Manual");
    EXPECT_EQ(data.sharpness, "Low");
    EXPECT_EQ(data.contrast, "High");
    EXPECT_EQ(data.saturation, "Normal");
  };
  const auto note = test::CasioNoteDirectory();
  check(InJpeg(test::WithCasioNote(note)));
  const auto littleEndian = TiffBuilder().Undefined(37500, note.BuildBehind(""));
  check(InJpeg(TiffBuilder().Ascii(271, "CASIO").Directory(34665, littleEndian)));

  const auto otherKind = TiffBuilder(Endian::Big).Undefined(37500, note.BuildBehind(std::string("QVC\0\0\0", 6)));
  EXPECT_EQ(InJpeg(TiffBuilder(Endian::Big).Ascii(271, "CASIO").Directory(34665, otherKind)).imageQuality, "");
}

TEST_F(OtherNotes, NumbersWithoutAWordLeaveTheStandardsTags) {
  const auto olympus = InJpeg(test::WithOlympusNote(TiffBuilder().Short(0x0201, 7).Short(0x0202, 0).Short(0x1004, 3)));
  EXPECT_EQ(olympus.imageQuality, "Unknown");
  EXPECT_EQ(olympus.macroFocus, "");
  EXPECT_EQ(olympus.flash, "On");
  const auto fuji = InJpeg(test::WithFujiNote(TiffBuilder().Short(0x1002, 0x600).Short(0x1010, 2)));
  EXPECT_EQ(fuji.whiteBalance, "Fine weather");
  EXPECT_EQ(fuji.flash, "On");
}

TEST_F(OtherNotes, TheNotesLevelsStandBeforeTheStandards) {
  const auto exif =
      TiffBuilder().Note(37500, "OLYMP\1\1\1", TiffBuilder().Short(0x100f, 2)).Short(41994, 2).Short(41992, 1);
  const auto data = InJpeg(TiffBuilder().Ascii(271, "OLYMPUS").Directory(34665, exif));
  EXPECT_EQ(data.sharpness, "Soft");
  EXPECT_EQ(data.contrast, "Low");
}

TEST_F(OtherNotes, NothingIsTakenFromPentax) {
  const auto exif = TiffBuilder().Note(37500, std::string("AOC\0MM", 6), test::NikonNoteDirectory(Endian::Little));
  const auto data = InJpeg(TiffBuilder().Ascii(271, "PENTAX Corporation").Directory(34665, exif));
  EXPECT_EQ(data.imageQuality + data.whiteBalance + data.sharpness + data.flash, "");
}

}  // namespace
}  // namespace ml::metadata
