#include "metadata/exif_text.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "metadata/exif_comment.h"

namespace ml::metadata {
namespace {

const platform::LocaleText kLocale;

ExifData FullRecord() {
  ExifData data;
  data.path = data.displayPath = "/p/a.jpg";
  data.fileSize = 123'456;
  data.imageNumber = 1030314;
  data.model = "Sample 1", data.bodySerial = "0123", data.firmware = "1.0", data.owner = "Me", data.copyright = "All";
  data.dateTime = "2003:05:17 10:11:12";
  data.shutterSpeed = "1/250", data.aperture = "2.8", data.exposureMode = "Av", data.iso = "200";
  data.exposureCompensation = -1.5, data.totalExposureCompensation = -1, data.hasTotalExposureCompensation = true;
  data.aebShot = 7, data.aebCompensation = 0.33;
  data.flash = "On", data.flashGuideNumber = 1.5, data.flashCompensation = 1;
  data.meteringMode = "Center", data.driveMode = "Continuous frame", data.selfTimer = 2.5;
  data.focalLength = 50, data.lensMinFocal = 28, data.lensMaxFocal = 80, data.focalLength35 = 75;
  data.digitalZoom = "2.0x", data.subjectDistance = 5.5, data.macroFocus = "On", data.afMode = "One shot";
  data.focusPoint = "[Center]", data.imageWidth = 3072, data.imageHeight = 2048, data.orientation = 6;
  data.imageQuality = "Fine", data.whiteBalance = "Auto", data.colorMatrix = 4, data.colorMode = "Mode";
  data.colorSpace = "sRGB", data.saturation = "High", data.sharpness = "Low", data.contrast = "Normal";
  data.pictureEffect = "Vivid", data.sharpnessLevel = "3", data.sharpnessPattern = "2", data.tone = "Warm";
  data.gamma = "2.2", data.noiseReduction = "Off", data.hueAdjustment = 3, data.iccProfileName = "Profile";
  data.customFunctions = "Custom Functions:\n1 On", data.comment = "Comment  ", data.imageDescription = "Description ";
  data.exifInvalid = true;
  return data;
}

TEST(PropertiesText, HasALineForEachFieldInItsOrder) {
  auto data = FullRecord();
  EXPECT_EQ(GetPropertiesText(data, kLocale),
            "File: /p/a.jpg\nFile size: 121KB\nImage Serial Number: 103-0314\nCamera Model: Sample 1\n"
            "Camera serial number: 0123\nFirmware: 1.0\nOwner: Me\nDate/Time: 2003:05:17 10:11:12\nCopyright: All\n"
            "Shutter speed: 1/250 sec\nAperture: 2.8\nExposure mode: Av\nExposure compensation: -1 1/2\nAEB shot: 7\n"
            "AEB compensation: +1/3\nTotal Exp comp: -1\nFlash: On\nFlash EF guide number: 1.50\n"
            "Flash exposure compensation: +1\nMetering mode: Center-weighted average\nDrive mode: Continuous frame\n"
            "Self-timer: 2.5 secs\nISO: 200\nLens: 28.0 to 80.0 mm\nFocal length: 50.0mm\n"
            "Focal length: 75mm (in 35mm film)\nDigital zoom: 2.0x\nSubject distance: 5.50 m\nMacro focus: On\n"
            "AF mode: One shot\nFocus point: [Center]\nImage size: 3072 x 2048\nRotation: 90 degrees CW\n"
            "Image quality: Fine\nWhite balance: Auto\nColor matrix 4: Adobe RGB\nColor mode: Mode\n"
            "Color space: sRGB\nSaturation: High\nSharpness: Low\nContrast: Normal\nPicture Effect: Vivid\n"
            "Sharpness level: 3\nSharpness pattern: 2\nTone: Warm\nGamma: 2.2\nNoise reduction: Off\n"
            "Hue adjustment: +3\nColor profile: Profile\nCustom Functions:\n1 On\nUser comments:\n\"Comment\"\n"
            "Image description:\n\"Description\"\n** WARNING**\nEXIF data invalid");
  EXPECT_EQ(data.meteringMode, "Center-weighted average") << "changed for good";
}

TEST(SummaryText, HasALineForEachFieldInItsOrder) {
  EXPECT_EQ(GetSummaryText(FullRecord(), kLocale),
            "2003:05:17 10:11:12\n28.0-80.0mm @ 50.0mm\n75mm (in 35mm film)\nDigital zoom: 2.0x\n"
            "Subject dist: 5.50m\n1/250 sec, f/2.8\nMode: Av\nMetering: Center\nExp comp: -1 1/2\nAEB shot: 7\n"
            "AEB comp: +1/3\nTotal Exp comp: -1\nISO: 200\nAF mode: One shot\nDrive: Continuous\n"
            "Self-timer: 2.5 secs\nWhite balance: Auto\nColor matrix 4: Adobe RGB\nColor mode: Mode\nFlash: On\n"
            "Flash exp comp: +1\nFile size: 121KB\nImage size: 3072 x 2048\nColor space: sRGB\nSaturation: High\n"
            "Sharpness: Low\nContrast: Normal\nPicture Effect: Vivid\nSharpness level: 3\nSharpness pattern: 2\n"
            "Tone: Warm\nNoise reduction: Off\nColor profile: Profile\nCustom Functions:\n1 On\n** WARNING**\n"
            "EXIF data invalid");
  EXPECT_EQ(GetShortSummaryText(FullRecord(), kLocale),
            "2003:05:17 10:11:12\nFocal length: 50.0mm\nLens: 28.0 to 80.0 mm\nDigital zoom: 2.0x\n"
            "1/250 sec, f/2.8\nMode: Av\nISO: 200\nAF mode: One shot\nWhite balance: Auto\nFlash: On\n"
            "File size: 121KB\nImage size: 3072 x 2048\n** WARNING**\nEXIF data invalid");
  EXPECT_EQ(GetSummaryText(ExifData(), kLocale), "");
}

TEST(PropertiesText, ConditionsOfSingleLines) {
  struct Case {
    const char* name;
    std::function<void(ExifData&)> change;
    const char* text;
  };
  const Case cases[] = {
      {"nothing known", [](ExifData&) {}, ""},
      {"other shot number", [](ExifData& d) { d.aebShot = 8; }, ""},
      {"no stops", [](ExifData& d) { d.exposureCompensation = 0.005; }, "Exposure compensation: 0"},
      {"equal totals",
       [](ExifData& d) {
         d.exposureCompensation = d.totalExposureCompensation = 1, d.hasTotalExposureCompensation = true;
       },
       "Exposure compensation: +1"},
      {"no flash", [](ExifData& d) { d.flash = "Off", d.flashGuideNumber = 2, d.flashCompensation = 1; }, "Flash: Off"},
      {"guide number of a D30", [](ExifData& d) { d.model = "NIKON D300", d.flash = "On", d.flashGuideNumber = 2; },
       "Camera Model: NIKON D300\nFlash: On"},
      {"metering of a D30", [](ExifData& d) { d.model = "Canon EOS D30", d.meteringMode = "Center"; },
       "Camera Model: Canon EOS D30\nMetering mode: Center"},
      {"macro of a D30", [](ExifData& d) { d.model = "D30", d.macroFocus = "On"; }, "Camera Model: D30"},
      {"stabiliser", [](ExifData& d) { d.model = "PRO90", d.macroFocus = "On"; },
       "Camera Model: PRO90\nImage Stabilisation: Off"},
      {"lens without focal length", [](ExifData& d) { d.lensMaxFocal = 80, d.focalLength35 = 75; },
       "Focal length: 75mm (in 35mm film)"},
      {"fixed lens", [](ExifData& d) { d.lensMinFocal = d.lensMaxFocal = 50, d.focalLength = 50; },
       "Lens: 50.0 mm\nFocal length: 50.0mm"},
      {"orientation of no JPEG", [](ExifData& d) { d.path = "a.tif", d.orientation = 6; }, ""},
      {"mirrored", [](ExifData& d) { d.path = "a.JPE", d.orientation = 2; }, "Rotation: orientation=2"},
      {"hue", [](ExifData& d) { d.hueAdjustment = -3; }, "Hue adjustment: -3"},
      {"matrix", [](ExifData& d) { d.colorMatrix = 6; }, ""},
      {"blank comment", [](ExifData& d) { d.comment = "   "; }, ""},
      {"description that says the same", [](ExifData& d) { d.comment = "A", d.imageDescription = "A  "; },
       "User comments:\n\"A\""},
  };
  for (const auto& c : cases) {
    ExifData data;
    c.change(data);
    EXPECT_EQ(GetPropertiesText(data, kLocale), c.text) << c.name;
  }
}

TEST(SummaryText, LensAndExposureMayBePartlyKnown) {
  ExifData data;
  data.focalLength = 50, data.lensMinFocal = data.lensMaxFocal = 50, data.shutterSpeed = "2";
  EXPECT_EQ(GetSummaryText(data, kLocale), "50.0mm\n2 sec");
  data = ExifData();
  data.aperture = "8.0";
  EXPECT_EQ(GetSummaryText(data, kLocale), "f/8.0");
}

TEST(Comment, IsTheFirstOfCommentDescriptionAndCaption) {
  ExifData data;
  data.path = "a.jpg";
  data.imageDescription = "Description ";
  EXPECT_EQ(GetExifComment(data), "") << "a description without a place in a segment";
  data.imageDescriptionPtr = 100;
  EXPECT_EQ(GetExifComment(data), "Description");
  data.userCommentPtr = 50;
  EXPECT_EQ(GetExifComment(data), "") << "there is room for a comment, which is empty";
  data.comment = "Comment ";
  EXPECT_EQ(GetExifComment(data), "Comment");

  const ExifOptions captions{.iptcComments = true};
  EXPECT_EQ(GetComment(data, captions), "Comment");
  data.iptc = {{2, 5, "Name"}, {1, 120, "Caption "}, {2, 120, "Second"}};
  EXPECT_EQ(GetComment(data, {}), "Comment");
  EXPECT_EQ(GetComment(data, captions), "Caption");
  data.path = "a.NEF";
  EXPECT_EQ(GetComment(data, {}), "Caption");
  data.iptc[1].value = "  ";
  EXPECT_EQ(GetComment(data, {}), "Comment");
}

}  // namespace
}  // namespace ml::metadata
