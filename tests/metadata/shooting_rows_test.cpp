#include "metadata/shooting_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "metadata/exif_fields.h"
#include "metadata/exif_files.h"
#include "metadata/exif_text.h"
#include "platform/text.h"
#include "support/canon_builder.h"
#include "support/metadata_blocks.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using namespace std::string_literals;

const platform::LocaleText kLocale;

std::string TextOf(ExifData data) { return ListText(ListShootingData(data, kLocale)); }

/// A camera's file with a note of its maker, a comment in Windows-1252 and a caption in UTF-8.
std::string CameraJpeg() {
  const auto exif = test::TiffBuilder()
                        .Rational(33434, 1, 250)
                        .Note(37500, "", test::CanonNote())
                        .Undefined(37510, "ASCII\0\0\0Caf\xe9 \x80 9\r\nsecond\x01line  "s);
  const auto tiff = test::TiffBuilder()
                        .Ascii(271, "Canon")
                        .Ascii(272, "Canon EOS 10D")
                        .Short(274, 8)
                        .Ascii(305, "Version 1.2")
                        .Directory(34665, exif);
  const auto iptc = test::IptcBlock({{.dataset = 90, .value = "\x1b%G", .record = 1},
                                     {20, "one"},
                                     {20, "two"},
                                     {22, "7"},
                                     {120, "\xc3\xa9t\xc3\xa9"},
                                     {200, "unknown"}});
  return test::MarkerJpeg(test::ExifSegment(tiff) + test::ResourceSegment(test::ImageResources({{1028, iptc}})));
}

TEST(ShootingRows, TellAFileInGroups) {
  const test::TempDir dir;
  ExifData data(dir.Write("a.jpg", CameraJpeg()));
  data.displayPath = "/p/a.jpg";
  data.fileSize = 2048;
  data.dateTime = "2003:05:17 10:11:12";
  EXPECT_EQ(TextOf(data),
            "Image\nImage Serial Number: 123-4567\nDate/Time: 2003:05:17 10:11:12\nImage size: 640 x 480\n"
            "Rotation: 90 degrees CCW\nImage quality: Raw\nSoftware: Version 1.2\nOrientation: 8\n\n"
            "Camera\nCamera Model: Canon EOS 10D\nCamera serial number: 0560018150\n"
            "Firmware: Firmware Version 1.0.2\nOwner: A. Photographer\nCamera make: Canon\n\n"
            "Exposure\nShutter speed: 1/250 sec\nExposure mode: Auto\nExposure compensation: -1\n"
            "Metering mode: Center-weighted average\nDrive mode: Continuous frame: 3\nSelf-timer: 10 secs\n"
            "Continuous frame: 3\nStitch or focus code: 8\n\n"
            "Lens and Focus\nLens: 28.0 to 300.0 mm\nFocal length: 100.0mm\nSubject distance: 1.42 m\n"
            "AF mode: One-shot AF\nFocus point: [Center]\nFocus point code: 12290\n\n"
            "Flash\nFlash: Off\n\nColour\nWhite balance: Color temp=5200K\nColor space: AdobeRGB\n\n"
            "Maker's Settings\nSaturation: Normal\nSharpness: Normal\nContrast: High\nTone: +2\n\n"
            "Custom Functions\nCFn 2: Shutter release w/o CF card: Not possible\n\n"
            "IPTC\n1:90:  %G\nSupplemental categories: one\nSupplemental categories: two\nJob ID: 7\n"
            "Caption: \u00e9t\u00e9\n2:200: unknown\n\n"
            "Comments\nUser comments:\nCaf\u00e9 \u20ac 9\nsecond line\n\n"
            "File\nFile: /p/a.jpg\nFile size: 2KB\nLow byte first: yes\nEntries of the first directory: 5\n"
            "Entries of the EXIF directory: 3");
}

TEST(ShootingRows, OrderOfTheLinesInAGroupIsThatOfTheText) {
  ExifData data;
  data.colorMatrix = 4, data.whiteBalance = "Auto", data.hueAdjustment = 3, data.hasIccProfile = true;
  data.iccProfileName = "Monitor";
  EXPECT_EQ(TextOf(data),
            "Colour\nWhite balance: Auto\nColor matrix 4: Adobe RGB\nHue adjustment: +3\nColor profile: Monitor\n"
            "Color profile embedded: yes");
  EXPECT_EQ(TextOf({}), "");
}

TEST(ShootingRows, CustomFunctionsAreARowEach) {
  ExifData data;
  data.customFunctions = "Custom Functions:\nCFn 1: Shutter release: AE lock; AE button: AF\nDefault settings";
  EXPECT_EQ(TextOf(data), "Custom Functions\nCFn 1: Shutter release: AE lock; AE button: AF\nDefault settings");
  const auto groups = ListShootingData(data, kLocale);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].rows[0], (ShootingRow{"CFn 1", "Shutter release: AE lock; AE button: AF"}));
}

TEST(ShootingRows, BrokenIptcDoesNotFillTheList) {
  ExifData data;
  data.iptc.assign(60'000, {2, 25, "x"});
  const auto groups = ListShootingData(data, kLocale);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].rows.size(), 1001U);
  EXPECT_EQ(groups[0].rows.back(), (ShootingRow{"", "59000 more"}));
}

/// Letters of either encoding, neither, and control characters.
TEST(ShootingRows, AreReadableWhateverTheBytes) {
  const std::pair<std::string, std::string> cases[] = {
      {"M\xfcller", "M\u00fcller"},           {"M\xc3\xbcller", "M\u00fcller"},
      {"\xc3\xbc\xff", "\u00c3\u00bc\u00ff"}, {"first \xc3\xbc\nsecond \xff", "first \u00c3\u00bc\nsecond \u00ff"},
      {"a\tb\x1b[1m\0c"s, "a b [1m c"},
  };
  for (const auto& [bytes, shown] : cases) {
    ExifData data;
    data.owner = bytes;
    const auto groups = ListShootingData(data, kLocale);
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].rows, (std::vector<ShootingRow>{{"Owner", shown}}));
    EXPECT_TRUE(platform::IsValidUtf8(ListText(groups)));
  }
}

/// Told in other words by a line of the full text, or of no use to people.
constexpr std::string_view kToldOtherwise[] = {
    "displayPath", "fileSize",     "shootingTime",    "imageNumber",       "customFunctions",
    "isoShort",    "aebShot",      "aebCompensation", "flashGuideNumber",  "exposureCompensation",
    "focalLength", "lensMinFocal", "lensMaxFocal",    "flashCompensation", "totalExposureCompensation",
    "maxAperture", "colorMatrix",  "subjectDistance", "macroFocus",        "hasTotalExposureCompensation"};

bool IsTold(const std::vector<ShootingRows>& groups, const std::string& value) {
  const auto shown = platform::ToDisplayUtf8(platform::TrimRight(value));
  const auto line = platform::ToDisplayLine(shown.substr(0, shown.find_first_of("\r\n")));
  return std::ranges::any_of(groups, [&](const auto& group) {
    return std::ranges::any_of(group.rows, [&](const auto& row) { return row.value.find(line) != std::string::npos; });
  });
}

TEST(ShootingRows, LeaveNothingOutOfRealFiles) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP() << "no real files here";
  int files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
    if (!entry.is_regular_file()) continue;
    ExifData data(entry.path().string());
    const auto groups = ListShootingData(data, kLocale);
    EXPECT_TRUE(platform::IsValidUtf8(ListText(groups))) << entry.path();
    for (const auto& field : ExifFields()) {
      const auto value = field.value(data);
      if (!HasContent(value) || std::ranges::find(kToldOtherwise, field.name) != std::end(kToldOtherwise)) continue;
      EXPECT_TRUE(IsTold(groups, FieldText(value))) << entry.path() << " " << field.name << "\n" << ListText(groups);
    }
    ++files;
  }
  EXPECT_GT(files, 100);
}

}  // namespace
}  // namespace ml::metadata
