#include "metadata/format_strings/format_strings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace ml::metadata {
namespace {

struct Image {
  ExifData data;
  ExifOptions options;
  platform::LocaleText locale;

  std::string operator()(std::string_view format) { return ExpandFormatString(format, {data, options, locale}); }
};

Image FullImage() {
  Image image;
  auto& d = image.data;
  d.path = d.displayPath = "/p/new\\old/IMG_0123b4.JPG";
  d.fileSize = 1'234'567, d.shootingTime = 1'000'000'000;
  d.dateTime = "2003:05:17 10:11:12";
  d.imageWidth = 3072, d.imageHeight = 2048;
  d.comment = " Seen by @owner@ ", d.owner = "Me", d.copyright = "All";
  d.model = "Sample 1", d.bodySerial = "0123", d.firmware = "1.0", d.imageNumber = 1'030'314;
  d.iso = "200", d.shutterSpeed = "1/250", d.aperture = "2.8", d.exposureMode = "Av", d.meteringMode = "Spot";
  d.lensMinFocal = 28, d.lensMaxFocal = 80, d.focalLength = 49.6, d.digitalZoom = "2.0x";
  d.whiteBalance = "Auto", d.flash = "On", d.flashGuideNumber = 1.5, d.selfTimer = 2.5, d.macroFocus = "Near";
  d.imageStabilisation = true, d.focusPoint = "[Center]", d.afMode = "One shot", d.driveMode = "Single";
  d.imageQuality = "Fine", d.saturation = "High", d.contrast = "Normal", d.sharpness = "Low";
  d.subjectDistance = 5.555, d.exposureCompensation = -1.5, d.flashCompensation = 1, d.aebCompensation = 0.33;
  d.aebShot = 3, d.customFunctions = "Custom Functions:\n1 On";
  return image;
}

/// What each token of the full image gives, and what stands for it in a description.
struct TokenCase {
  std::string_view token, value, label;
};
constexpr TokenCase kTokenCases[] = {
    {"@dir@", "/p/new\\old/", "Directory"},
    {"@dirEscaped@", "/p/new\\\\old/", "Directory"},
    {"@dirSlash@", "/p/new\\old/", "Directory"},
    {"@file@", "IMG_0123b4.JPG", "Filename"},
    {"@fileNoExt@", "IMG_0123b4", "Filename (no ext)"},
    {"@fileLower@", "img_0123b4.jpg", "Filename (lower case)"},
    {"@fileNoExtLower@", "img_0123b4", "Filename (no ext, lower case)"},
    {"@fileAsNumber@", "0123", "Filename (as number)"},
    {"@fileAsNumber2@", "4", "Filename (as number)"},
    {"@fileSize@", "1,206KB", "File size"},
    {"@fileSizeInBytes@", "1,234,567", "File size"},
    {"@fileSizePlain@", "1234567", "File size"},
    {"@width@", "3072", "Image width"},
    {"@height@", "2048", "Image height"},
    {"@caption@", "Seen by Me", "Comments"},
    {"@exifComments@", "Seen by Me", "@exifComments@"},
    {"@owner@", "Me", "Owner"},
    {"@copyright@", "All", "Copyright"},
    {"@year@", "2003", "Year"},
    {"@month@", "05", "Month"},
    {"@day@", "17", "Day"},
    {"@time@", "10:11:12", "Time"},
    {"@hour@", "10", "Hour"},
    {"@minute@", "11", "Minute"},
    {"@second@", "12", "Second"},
    {"@dateTime@", "2003:05:17 10:11:12", "DateTime"},
    {"@model@", "Sample 1", "Model"},
    {"@bodyID@", "0123", "Body ID"},
    {"@firmware@", "1.0", "Firmware"},
    {"@iso@", "200", "ISO"},
    {"@shutter@", "1/250", "Shutter speed"},
    {"@aperture@", "2.8", "Aperture"},
    {"@lens@", "28.0 to 80.0", "Lens"},
    {"@focalLength@", "50", "Focal length"},
    {"@digitalZoom@", "2.0x", "@digitalZoom@"},
    {"@exposureMode@", "Av", "ExposureMode"},
    {"@meteringMode@", "Spot", "Metering mode"},
    {"@whiteBalance@", "Auto", "White balance"},
    {"@flash@", "On", "Flash"},
    {"@EFguideNumber@", "1.50", "EF Guide number"},
    {"@selfTimer@", "2.5", "Self timer"},
    {"@imageStabilisation@", "On", "Image stabilisation"},
    {"@macro@", "Near", "Macro"},
    {"@focusPoint@", "[Center]", "Focus point"},
    {"@focusMode@", "One shot", "AF mode"},
    {"@driveMode@", "Single", "Drive mode"},
    {"@quality@", "Fine", "Image quality"},
    {"@saturation@", "High", "Saturation"},
    {"@contrast@", "Normal", "Contrast"},
    {"@sharpness@", "Low", "Sharpness"},
    {"@subjectDistance@", "5.55", "Subject distance"},
    {"@exposureCompensation@", "-1 1/2", "Exposure compensation"},
    {"@flashCompensation@", "+1", "Flash compensation"},
    {"@aebExpCompensation@", "+1/3", "AEB exposure compensation"},
    {"@aebShotNumber@", "3", "AEB shooting number"},
    {"@seqNumber@", "1030314", "Image number"},
    {"@customFunctions@", "Custom Functions:\n1 On", "Custom functions"},
};
/// Their values are tested on their own.
constexpr std::string_view kOtherTokens[] = {"@exif@", "@exifSummary@", "@date@"};

TEST(FormatStrings, EveryTokenHasItsValueAndItsLabel) {
  auto image = FullImage();
  std::set<std::string_view> tested(std::begin(kOtherTokens), std::end(kOtherTokens));
  for (const auto& c : kTokenCases) {
    EXPECT_EQ(image("<" + std::string(c.token) + c.token.data() + ">"),
              "<" + std::string(c.value) + std::string(c.value) + ">")
        << c.token;
    EXPECT_EQ(DescribeFormatString(c.token), c.label);
    tested.insert(c.token);
  }
  for (const auto& row : FormatTokens()) {
    EXPECT_TRUE(row.group == TokenGroup::Iptc || tested.contains(row.token)) << row.token;
  }
  EXPECT_EQ(FormatTokens().size(), 88U);
}

TEST(FormatStrings, DescribesWhatItKnows) {
  EXPECT_EQ(DescribeFormatString("@date@, @lens@mm (@nothing@) @exif@@exifSummary@ @IPTC_origTransRef@"),
            "Date, Lensmm (@nothing@) @exif@@exifSummary@ IPTC originalTransmissionReference");
}

TEST(FormatStrings, LeavesAloneWhatIsNoToken) {
  auto image = FullImage();
  for (const char* text : {"", "plain", "@", "@@", "@unknown@", "@ISO@", "@iso", "iso@", "@ iso@", "@ISO@\n%d%s\\n",
                           "a\xC4 \xE2\x82", "@iptc_city@", "@IPTC_nothing@"}) {
    EXPECT_EQ(image(text), text);
    EXPECT_EQ(DescribeFormatString(text), text);
  }
  EXPECT_EQ(image("@@iso@@"), "@200@");
  EXPECT_EQ(image("@iso@iso@"), "200iso@");
  EXPECT_EQ(image(std::string("a\0@iso@", 7)), std::string("a\0"
                                                           "200",
                                                           5));
}

TEST(FormatStrings, AValueIsOpenToTheTokensBehindItsOwn) {
  auto image = FullImage();
  image.data.comment = "@iso@ and @dir@";
  EXPECT_EQ(image("@caption@"), "200 and @dir@");
  image.data.comment = "@caption@ @exifComments@";
  EXPECT_EQ(image("@caption@"), "@caption@ @caption@ @exifComments@") << "itself only once, and only by its own name";
  image.data.owner = "@copyright@", image.data.copyright = "@owner@";
  EXPECT_EQ(image("@owner@ @copyright@"), "@owner@ @owner@");
  image.data.iptc = {{2, 90, "@iso@ @IPTC_country@"}, {2, 101, "@IPTC_city@"}};
  EXPECT_EQ(image("@IPTC_city@"), "@iso@ @IPTC_city@");
  image.data.path = "/p/@iso@.jpg";
  EXPECT_EQ(image("@file@"), "200.jpg");
}

struct ChangeCase {
  const char* name;
  std::function<void(Image&)> change;
  const char *format, *text;
};
class FormatStringsOf : public testing::TestWithParam<ChangeCase> {};

TEST_P(FormatStringsOf, FollowTheRecord) {
  auto image = FullImage();
  GetParam().change(image);
  EXPECT_EQ(image(GetParam().format), GetParam().text);
}

constexpr const char* kTimes = "@year@|@month@|@day@|@time@|@hour@|@minute@|@second@|@dateTime@";
ChangeCase Dated(const char* name, const char* date, const char* text) {
  return {name, [date](Image& i) { i.data.dateTime = date; }, kTimes, text};
}
ChangeCase Sized(const char* name, std::uint64_t size, const char* text, const char* decimal = ".",
                 const char* thousands = ",") {
  return {name,
          [=](Image& i) {
            i.data.fileSize = size;
            i.locale.decimalSeparator = decimal;
            i.locale.thousandsSeparator = thousands;
          },
          "@fileSize@ @fileSizeInBytes@ @fileSizePlain@", text};
}
ChangeCase Named(const char* name, const char* path, const char* text) {
  return {name, [path](Image& i) { i.data.path = path; },
          "@dir@|@file@|@fileNoExtLower@|@fileAsNumber@|@fileAsNumber2@", text};
}

INSTANTIATE_TEST_SUITE_P(
    Dates, FormatStringsOf,
    testing::Values(Dated("Empty", "", "|||||||"),
                    Dated("Three", "200",
                          "||||||"
                          "|200"),
                    Dated("Year", "2003", "2003|||||||2003"), Dated("Nine", "2003:05:1", "2003|05||||||2003:05:1"),
                    Dated("Day", "2003:05:17", "2003|05|17|||||2003:05:17"),
                    Dated("Eighteen", "2003:05:17 10:11:1", "2003|05|17|||||2003:05:17 10:11:1"),
                    Dated("Longer", "2003:05:17 10:11:12.5", "2003|05|17|10:11:12|10|11|12|2003:05:17 10:11:12.5")),
    [](const auto& c) { return std::string(c.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Sizes, FormatStringsOf,
    testing::Values(Sized("Nothing", 0, "0KB 0 0"), Sized("Rounded", 513, "1KB 513 513"),
                    Sized("ThreeDigits", 999, "1KB 999 999"), Sized("FourDigits", 1000, "1KB 1,000 1000"),
                    Sized("Comma", 1'234'567, "1206KB 1.234.567 1234567", ",", "."),
                    Sized("WideSeparator", 1'234'567, "1206KB 1\u202F234\u202F567 1234567", ",", "\u202F"),
                    Sized("Blank", 1'234'567, "1,206KB 1234567 1234567", ".", " "),
                    Sized("None", 1'234'567, "1,206KB 1234567 1234567", ".", ""),
                    Sized("Big", 5'000'000'000, "4,768MB 5,000,000,000 5000000000")),
    [](const auto& c) { return std::string(c.param.name); });

INSTANTIATE_TEST_SUITE_P(Names, FormatStringsOf,
                         testing::Values(Named("NoDigits", "/a/b.jpg", "/a/|b.jpg|b||"),
                                         Named("Relative", "B", "|B|b||"),
                                         Named("Digits", "/0123.jpg", "/|0123.jpg|0123|0123|123"),
                                         Named("OnlyEnding", "/a/.jpeg", "/a/|.jpeg|||"),
                                         Named("Umlaut", "/\u00C4.JPG", "/|\u00C4.JPG|\u00E4||"),
                                         Named("Broken", "/A\xC4.JPG", "/|A\xC4.JPG|a\xC4||")),
                         [](const auto& c) { return std::string(c.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Values, FormatStringsOf,
    testing::Values(
        ChangeCase{"Unknown", [](Image& i) { i.data = ExifData(); },
                   "@lens@|@focalLength@|@EFguideNumber@|@selfTimer@|@imageStabilisation@|@subjectDistance@|"
                   "@exposureCompensation@|@aebShotNumber@|@seqNumber@|@width@|@iso@|@dir@|@caption@|@exifSummary@",
                   "0.0|0|0.00|0|Off||0|0|0000000|0||||"},
        ChangeCase{"OneLens", [](Image& i) { i.data.lensMinFocal = i.data.lensMaxFocal = 50; }, "@lens@", "50.0"},
        ChangeCase{"HalfLens", [](Image& i) { i.data.lensMinFocal = 0; }, "@lens@", "0.0 to 80.0"},
        ChangeCase{"Near", [](Image& i) { i.data.subjectDistance = 0.001; }, "<@subjectDistance@>", "<>"},
        ChangeCase{"NotThatNear", [](Image& i) { i.data.subjectDistance = 0.0011; }, "@subjectDistance@", "0.00"},
        ChangeCase{"Padded", [](Image& i) { i.data.imageNumber = 42; }, "@seqNumber@", "0000042"},
        ChangeCase{"Negative", [](Image& i) { i.data.imageNumber = -42; }, "@seqNumber@", "-000042"},
        ChangeCase{"LatinComment", [](Image& i) { i.data.comment = "\xC4hre\xE2\x82 "; }, "@exifComments@|",
                   "\xC4hre\xE2\x82|"},
        ChangeCase{"Caption",
                   [](Image& i) {
                     i.options.iptcComments = true;
                     i.data.iptc = {{2, 120, " From IPTC\n"}};
                   },
                   "@caption@|@exifComments@", "From IPTC|Seen by Me"}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(FormatStrings, TheLongTextsStandAtTheirTokens) {
  auto image = FullImage();
  image.data.meteringMode = "Center";
  EXPECT_TRUE(image("@exifSummary@").starts_with("2003:05:17 10:11:12\n28.0-80.0mm @ 49.6mm\n"));
  EXPECT_EQ(image("@meteringMode@"), "Center");
  EXPECT_TRUE(image("@exif@").starts_with("File: /p/new\\old/IMG_0123b4.JPG\nFile size: 1,206KB\n"));
  EXPECT_EQ(image("@meteringMode@"), "Center-weighted average") << "spelt out by the full text, for good";
  image.data.comment = std::string(20'000, 'x') + " @iso@";
  EXPECT_EQ(image("@caption@"), std::string(20'000, 'x') + " 200");
  const auto date = image("@date@");
  EXPECT_TRUE(date == "Sunday, September 09, 2001" || date == "Saturday, September 08, 2001") << date;
}

TEST(FormatStrings, IptcTokensHaveTheValuesOfTheirDatasets) {
  constexpr int kDatasets[] = {5,  7,  10, 15, 20, 22,  25,  30,  35,  40,  55,  60,  65,  75,
                               80, 85, 90, 92, 95, 100, 101, 103, 105, 110, 115, 116, 120, 122};
  Image image;
  for (const int dataset : kDatasets) image.data.iptc.push_back({2, dataset, std::to_string(dataset)});
  std::vector<std::string> values;
  for (const auto& row : FormatTokens()) {
    if (row.group == TokenGroup::Iptc) values.push_back(image(row.token));
  }
  EXPECT_TRUE(std::ranges::equal(values, kDatasets, {}, {}, [](int dataset) { return std::to_string(dataset); }));
}

TEST(FormatStrings, IptcValuesRepeatAndHaveALimit) {
  Image image;
  EXPECT_EQ(image("<@IPTC_keywords@@IPTC_city@>"), "<>") << "none, and no token left";
  image.data.iptc = {
      {2, 25, "a"},    {2, 90, "first"}, {1, 90, "other record"},           {2, 25, "b"},
      {2, 20, "c"},    {2, 90, "last"},  {2, 90, std::string(1024, 'x')},   {2, 25, std::string(1024, 'x')},
      {2, 25, "\xC4"}, {2, 20, "d"},     {2, 5, std::string("cut\0off", 7)}};
  EXPECT_EQ(image("@IPTC_keywords@|@IPTC_supplementalCategories@|@IPTC_city@|@IPTC_objectName@"),
            "a, b, \xC4|c, d|last|cut");
  image.data.iptc = {{2, 90, std::string(1023, 'x')}};
  EXPECT_EQ(image("@IPTC_city@").size(), 1023U);
}

TEST(FormatStrings, ACommentOfTokensDoesNotFillTheMemory) {
  Image image;
  for (int i = 0; i < 500; ++i) {
    image.data.comment += "@exifComments@@exif@@owner@";
    image.data.owner += "@customFunctions@";
  }
  image.data.customFunctions = std::string(10'000, 'x');
  EXPECT_LE(image("@caption@@exif@").size(), (1U << 20U) + 100);
}

}  // namespace
}  // namespace ml::metadata
