#include "metadata/edit/exif_block_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>

#include "metadata/byte_view.h"
#include "metadata/exif_fields.h"
#include "metadata/ifd.h"
#include "platform/text.h"
#include "support/canon_builder.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

/// What belongs to the file and not to the shot, and what a block says anew.
constexpr std::string_view kOthers[] = {"displayPath",
                                        "fileSize",
                                        "shootingTime",
                                        "exifInvalid",
                                        "isEos1DRaw",
                                        "isoShort",
                                        "tiffThumbnailOnly",
                                        "orientation",
                                        "userRotation",
                                        "samplesPerPixel",
                                        "hasIccProfile",
                                        "rawColorMatrix",
                                        "rawContrast",
                                        "rawSharpness",
                                        "whiteBalanceCode",
                                        "littleEndian",
                                        "ifd0EntryCount",
                                        "exifIfdEntryCount",
                                        "software",
                                        "hasTotalExposureCompensation",
                                        "totalExposureCompensation"};

class BuiltBlock : public testing::Test {
 protected:
  ExifData ReadBack(const ExifData& data, const ByteSource* source = nullptr) const {
    const auto block = BuildExifBlock(data, source);
    EXPECT_EQ(block.size(), ByteView(block, ByteOrder::Big).readShort(0)) << "the length counts itself";
    std::string segment = "\xff\xe1";
    segment.append(reinterpret_cast<const char*>(block.data()), block.size());
    const auto jpeg = test::InsertSegments(EncodeJpeg(test::PaintPlain(16, 16, 0)), segment);
    return ExifData(dir_.Write("built.jpg", jpeg));
  }
  test::TempDir dir_;
};

std::string Text(const ExifFieldValue& value) {
  return std::visit(
      [](const auto& known) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(known)>, std::string>) {
          return known;
        } else {
          return std::to_string(known);
        }
      },
      value);
}

void ExpectSame(const ExifData& wanted, const ExifData& got, const std::set<std::string_view>& except = {}) {
  for (const auto& row : ExifFields()) {
    const bool isOther = std::ranges::find(kOthers, row.name) != std::end(kOthers);
    if (isOther || except.contains(row.name)) continue;
    EXPECT_EQ(Text(row.value(got)), Text(row.value(wanted))) << row.name << " of " << wanted.path;
  }
  EXPECT_FALSE(got.exifInvalid);
  EXPECT_EQ(got.orientation, 1);
  EXPECT_EQ(got.dateRecorded, wanted.dateRecorded);
}

ExifData Shot(const std::string& model) {
  ExifData data;
  data.make = "Canon";
  data.model = model;
  data.dateTime = data.dateTimeOriginal = data.dateTimeDigitized = "2003:05:17 10:11:12";
  data.dateRecorded = true;
  data.firmware = "Firmware Version 1.0.2";
  data.owner = "A. Photographer";
  data.bodySerial = "0560018150";
  data.imageNumber = 1234567;
  data.exposureMode = "Av";
  data.shutterSpeed = "1/250";
  data.aperture = "5.6";
  data.iso = "400";
  data.exposureCompensation = -0.625;
  data.aebCompensation = 0.375;
  data.aebShot = 2;
  data.meteringMode = "Evaluative";
  data.flash = "External E-TTL High speed sync + Slow synchro + 2nd curtain sync";
  data.flashCompensation = -1;
  data.focalLength = 100;
  data.lensMinFocal = 28;
  data.lensMaxFocal = 300;
  data.subjectDistance = 1.42;
  data.focusPoint = "[Left + Center]";
  data.focusPointCode = 0x3006;
  data.afMode = "AI Focus AF";
  data.driveMode = "Continuous frame: 3";
  data.continuousFrame = 3;
  data.selfTimer = 10;
  data.stitchShot = 8;
  data.imageWidth = 3072;
  data.imageHeight = 2048;
  data.imageQuality = "Raw";
  data.whiteBalance = "Color temp=5200K";
  data.contrast = data.saturation = data.sharpness = "High";
  data.colorSpace = "AdobeRGB";
  data.comment = "A comment";
  data.imageDescription = "A description that is longer than the field of a camera";
  data.copyright = "(c) somebody";
  return data;
}

TEST_F(BuiltBlock, SaysWhatTheRecordKnows) {
  const auto with = [](ExifData data, auto&& change) {
    change(data);
    return data;
  };
  const ExifData cases[] = {
      with(Shot("Canon EOS 10D"),
           [](auto& d) {
             d.tone = "-2";
             d.customFunctions =
                 "Custom Functions:\nCFn 4: Shutter release: AF; AE button: AF lock, no AE lock\n"
                 "CFn 12: Mirror lockup: Enable\nCFn 17: Lens AF stop button: IS start";
           }),
      with(Shot("Canon EOS D60"),
           [](auto& d) {
             d.tone = "Red";
             d.iso = "Auto";
             d.driveMode = "Single frame shooting";
             d.continuousFrame = 0;
             d.customFunctions = "Custom Functions:\nDefault settings";
           }),
      with(Shot("Canon EOS D30"),
           [](auto& d) {
             d.bodySerial = "123400005";
             d.flash = "Off";
             d.subjectDistance = 0;
             d.customFunctions = "Custom Functions:\nCFn 11: Menu button return position: Previous";
           }),
      with(Shot("Canon EOS-1D"),
           [](auto& d) {
             d.bodySerial = "004711";
             d.contrast = d.saturation = d.sharpness = "";
             d.customFunctions =
                 "Custom Functions:\nCFn 0: Focusing screen: New Laser-matte\n"
                 "CFn 20: AI Servo tracking: Fast";
           }),
      with(Shot("Canon PowerShot G3"),
           [](auto& d) {
             d.exposureMode = "Night scene";
             d.pictureEffect = "Sepia";
             d.pictureEffectCode = 4;
             d.digitalZoom = "2.3x";
             d.macroFocus = "On";
             d.afMode = "Single AF";
             d.imageStabilisation = true;
             d.whiteBalance = "Custom2";
             d.focalLength = 7;
             d.lensMinFocal = 7;
             d.lensMaxFocal = 28;
             d.shutterSpeed = "1.3";
             d.meteringMode = "Center-weighted average";
             d.flash = "Built-in Auto + Red eye reduction";
           }),
  };
  for (const auto& data : cases) {
    SCOPED_TRACE(data.model);
    ExpectSame(data, ReadBack(data));
  }
}

TEST_F(BuiltBlock, ClaimsNothingThatIsNotKnown) {
  ExifData data;
  data.dateTime = "2003:05:17 10:11:12";  // that of the file
  auto other = ReadBack(data);
  other.dateTime.clear();
  ExpectSame(ExifData(), other, {"imageWidth", "imageHeight"});
  data.make = "Canon";
  data.model = "Canon EOS 300D DIGITAL";
  auto canon = ReadBack(data);
  canon.dateTime.clear();
  data.dateTime.clear();
  ExpectSame(data, canon, {"imageWidth", "imageHeight"});
}

TEST_F(BuiltBlock, TakesTheNoteOfARawFileAsItIs) {
  for (const auto order : {test::Endian::Little, test::Endian::Big}) {
    test::TiffBuilder tiff(order);
    tiff.Long(256, 2496).Long(257, 1662).Ascii(271, "Canon").Ascii(272, "Canon EOS 10D");
    auto note = test::CanonNote();
    note.Rational(200, 7, 3).Undefined(201, "odd").Long(202, {1, 2, 3});
    tiff.Directory(34665, test::TiffBuilder().Ascii(36867, "2003:05:17 10:11:12").Note(37500, "", note));
    const auto bytes = tiff.Build();
    const ExifData data(dir_.Write("raw.tif", bytes));
    ASSERT_EQ(data.imageNumber, 1234567);
    const MemorySource source(platform::AsBytes(bytes));
    const auto back = ReadBack(data, &source);
    // Only the note in a block tells the colour space.
    EXPECT_EQ(back.colorSpace, "AdobeRGB");
    ExpectSame(data, back, {"colorSpace", "dateTimeDigitized"});

    const MemorySource block(std::span(back.exifBlock).subspan(8));
    std::map<int, IfdEntry> found;
    IfdWalker walker(block, ByteOrder::Little, {.followNext = false});
    const IfdVisitor visit = [&](const IfdEntry& entry) {
      found[entry.tag] = entry;
      return entry.tag == 34665 || entry.tag == 37500 ? walker.Walk(entry.value, visit) : Visit::Continue;
    };
    walker.Walk(8, visit);
    EXPECT_TRUE(found[200].Is(IfdType::Rational) && found[201].count == 3 && found[202].count == 3);
    EXPECT_EQ(block.ReadNumber(found[200].value + 4, 4, ByteOrder::Little), 3U);
    EXPECT_EQ(block.ReadNumber(found[202].value + 8, 4, ByteOrder::Little), 3U);

    auto broken = data;
    broken.makerNoteOffset = static_cast<std::uint32_t>(bytes.size() - 1);
    EXPECT_EQ(ReadBack(broken, &source).imageNumber, 1234567) << "told by the record then";
  }
}

TEST_F(BuiltBlock, HoldsTextsOfAnyLength) {
  auto data = Shot("Canon EOS 10D");
  data.comment = data.imageDescription = data.copyright = data.make = std::string(100'000, 'x');
  data.make.replace(0, 5, "Canon");
  data.owner = data.firmware = std::string(1000, '7');
  data.model = "Canon EOS 10D with a name that is longer than its field";
  const auto back = ReadBack(data);
  EXPECT_TRUE(data.comment.starts_with(back.comment) && back.comment.size() > 10'000);
  EXPECT_EQ(back.owner, std::string(31, '7'));
  EXPECT_EQ(back.shutterSpeed, "1/250");

  data.shutterSpeed = "1/0";
  data.aperture = "-3";
  data.focalLength = data.subjectDistance = data.exposureCompensation = std::nan("");
  data.selfTimer = data.lensMaxFocal = 1e300;
  data.imageWidth = data.imageNumber = -1;
  EXPECT_EQ(ReadBack(data).focalLength, 0);
}

TEST_F(BuiltBlock, RealRawFilesReadTheSame) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP();
  for (const auto* name : {"canon-eos-d30.crw", "canon-powershot-g2-0304.crw", "canon-powershot-s40-0112.crw",
                           "canon-powershot-s40-stripped.crw", "canon-eos-300d-stripped.crw"}) {
    ExifData data(*samples + "/crw/" + name);
    EXPECT_TRUE(data.dateRecorded) << name;
    // Where only one date is known it stands for all three.
    for (auto* date : {&data.dateTimeOriginal, &data.dateTimeDigitized}) {
      if (date->empty()) *date = data.dateTime;
    }
    ExpectSame(data, ReadBack(data));
  }
}

}  // namespace
}  // namespace ml::metadata
