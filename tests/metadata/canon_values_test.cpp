#include "metadata/canon/canon_values.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "support/byte_string.h"

namespace ml::metadata {
namespace {

using D = ExifData;
using Words = std::vector<std::pair<std::size_t, int>>;

void Apply(ExifData& data, std::uint16_t tag, std::size_t count, const Words& words) {
  std::vector<int> array(count);
  for (const auto& [index, value] : words) array.at(index) = value;
  test::ByteString bytes(test::Endian::Big);
  for (const int word : array) bytes.Short(static_cast<std::uint64_t>(word));
  ApplyCanonArray(data, tag, CanonWords(ByteView(std::as_bytes(std::span(bytes.Bytes())), ByteOrder::Big)));
}

ExifData Applied(const std::string& model, std::uint16_t tag, std::size_t count, const Words& words) {
  ExifData data;
  data.model = model;
  Apply(data, tag, count, words);
  return data;
}

/// What a word of the settings shows as, for codes one after the other; "before" is left alone.
struct WordCase {
  std::size_t index;
  std::string D::*field;
  int firstCode;
  std::vector<std::string> words;
  std::string model = "Canon EOS 20D";
};

TEST(CanonSettings, EveryCodeHasItsWord) {
  const WordCase cases[] = {
      {1, &D::macroFocus, 0, {"before", "On", "before"}},
      {3, &D::imageQuality, 0, {"Unknown", "Lossless", "Normal", "Fine", "Raw", "Super fine", "Unknown"}},
      {5, &D::driveMode, 0, {"Single frame shooting", "Continuous", "Continuous"}},
      {7,
       &D::afMode,
       0,
       {"One-shot AF", "AI Servo AF", "AI Focus AF", "Manual Focus", "Single AF", "Continuous AF", "Manual Focus",
        "before"}},
      {13, &D::contrast, 0, {"Normal", "High", "High2", "Normal"}},
      {13, &D::contrast, 65533, {"Normal", "Low2", "Low"}},
      {14, &D::saturation, 0, {"Normal", "High", "High2"}},
      {14, &D::saturation, 65534, {"Low2", "Low"}},
      {15, &D::sharpness, 0, {"Normal", "High", "High2"}},
      {15, &D::sharpness, 65534, {"Low2", "Low"}},
      {16, &D::iso, 14, {"before", "Auto", "50", "100", "200", "400", "800", "before"}},
      {17,
       &D::meteringMode,
       0,
       {"Center", "Spot", "Average", "Evaluative", "Partial", "Center-weighted average", "before"}},
      {20, &D::exposureMode, 1, {"Program", "Tv", "Av", "Manual", "A-DEP", "before"}},
      // By the scene, while word 20 is 0.
      {11,
       &D::exposureMode,
       0,
       {"Auto", "Manual", "Landscape", "Fast shutter", "Slow shutter", "Night scene", "Black and white", "Sepia",
        "Portrait", "Sports", "Close-up", "Pan focus", "Vivid", "Neutral", "Black and white", "before"}},
      {40,
       &D::pictureEffect,
       0,
       {"Normal", "Vivid", "Neutral", "Low sharpening", "Sepia", "Black & white", ""},
       "Canon PowerShot G5"},
      {40, &D::pictureEffect, 1, {"Vivid"}, "Canon PowerShot S330"},
      {40, &D::pictureEffect, 1, {"before"}, "Canon PowerShot S30"},
      {42, &D::tone, 0, {"Normal", "Yellow", "Red"}, "Canon EOS D60"},
      {42, &D::tone, 0, {"Normal", "+1", "+2", "?"}, "Canon EOS Kiss Digital"},
      {42, &D::tone, 65534, {"-2", "-1"}, "Canon EOS Kiss Digital"},
      {42, &D::tone, 1, {"+1"}, "Canon EOS 10D"},
      {42, &D::tone, 1, {"before"}, "Canon EOS 300D DIGITAL"},
  };
  for (const auto& c : cases) {
    auto code = c.firstCode;
    for (const auto& word : c.words) {
      ExifData data;
      data.model = c.model;
      data.*c.field = "before";
      Apply(data, canon_tag::kCameraSettings, 46, {{c.index, code}});
      EXPECT_EQ(data.*c.field, word) << c.index << ": " << code;
      ++code;
    }
  }
}

TEST(CanonSettings, AWordBehindTheArrayLeavesItsFieldAlone) {
  ExifData data;
  data.afMode = data.contrast = "before";
  data.imageStabilisation = true;
  Apply(data, canon_tag::kCameraSettings, 7, {{2, 100}, {3, 4}, {4, 1}, {5, 1}});
  EXPECT_EQ(data.selfTimer, 10);
  EXPECT_EQ(data.imageQuality, "Raw");
  EXPECT_EQ(data.flash, "Built-in Auto");
  EXPECT_EQ(data.driveMode, "Continuous");
  EXPECT_EQ(data.afMode, "before");
  EXPECT_EQ(data.contrast, "before");
  Apply(data, canon_tag::kCameraSettings, 25, {});
  EXPECT_TRUE(data.imageStabilisation);
  Apply(data, canon_tag::kCameraSettings, 34, {});
  EXPECT_FALSE(data.imageStabilisation);
  Apply(data, canon_tag::kCameraSettings, 35, {{34, 1}});
  EXPECT_TRUE(data.imageStabilisation);
  EXPECT_EQ(Applied("", canon_tag::kCameraSettings, 33, {{7, 4}, {32, 1}}).afMode, "Continuous AF");
  EXPECT_EQ(Applied("", canon_tag::kCameraSettings, 32, {{7, 4}}).afMode, "Single AF");
  EXPECT_EQ(Applied("Canon PowerShot G3", canon_tag::kCameraSettings, 41, {{40, 1}}).pictureEffect, "");
  EXPECT_EQ(Applied("Canon EOS D60", canon_tag::kCameraSettings, 43, {{42, 1}}).tone, "");
}

TEST(CanonSettings, LensAndZoom) {
  struct Case {
    Words words;
    double longest, shortest;
  };
  const Case lenses[] = {{{{23, 682}, {24, 227}, {25, 32}}, 21, 7},
                         {{{23, 300}, {24, 28}, {25, 1}}, 300, 28},
                         {{{23, 0x2c01}, {24, 0x1c00}, {25, 0x0100}}, 300, 28},
                         {{{23, 300}, {24, 28}}, 0, 0}};
  for (const auto& c : lenses) {
    const auto data = Applied("Canon EOS-1D", canon_tag::kCameraSettings, 26, c.words);
    EXPECT_EQ(data.lensMaxFocal, c.longest);
    EXPECT_EQ(data.lensMinFocal, c.shortest);
  }
  const auto zoom = [](int from, int to) {
    return Applied("", canon_tag::kCameraSettings, 38, {{36, from}, {37, to}}).digitalZoom;
  };
  EXPECT_EQ(zoom(1600, 3600), "2.2x");
  EXPECT_EQ(zoom(2272, 2272), "");
  EXPECT_EQ(zoom(0, 2272), "");
}

TEST(CanonSettings, Flash) {
  struct Case {
    int mode, detail;
    std::string text, model = "Canon EOS 10D", before{};
  };
  const Case cases[] = {
      {2, 0x2000, "Built-in"},
      {2, 0, "Off"},
      {1, 0x80, "Off"},
      {0, 0x2000, "Off"},
      {1, 0x2000, "Built-in Auto"},
      {3, 0x2000, "Built-in + Red eye reduction"},
      {4, 0x2000, "Built-in + Slow synchro"},
      {5, 0x2000, "Built-in Auto + Red eye reduction"},
      {6, 0x2080, "Built-in + Red eye reduction + 2nd curtain sync"},
      {2, 0x6000, "External"},
      {2, 0x4001, "External Manual"},
      {2, 0x4002, "External TTL"},
      {2, 0x400c, "External A-TTL"},
      {2, 0x4018, "External E-TTL High speed sync"},
      {2, 0x2001, "Built-in"},
      {2, 0x0840, "External E-TTL", "Canon EOS-1D"},
      {2, 0x0840, "Off", "Canon EOS 10D"},
      {2, 0x4008, "External E-TTL", "Canon EOS-1DS"},
      {2, 0x2000, "off", "Canon EOS 10D", "off"},
      {2, 0x2000, "Built-in", "Canon EOS 10D", "On"},
  };
  for (const auto& c : cases) {
    ExifData data;
    data.model = c.model;
    data.flash = c.before;
    Apply(data, canon_tag::kCameraSettings, 30, {{4, c.mode}, {29, c.detail}});
    EXPECT_EQ(data.flash, c.text) << c.mode << " " << c.detail;
  }
}

TEST(CanonNumbers, FocalLengthByModel) {
  struct Case {
    std::string model;
    int word;
    double length;
  };
  const Case cases[] = {{"Canon PowerShot G2", 227, 7}, {"Canon PowerShot G2", 149, 149}, {"Canon EOS 10D", 227, 227},
                        {"Canon EOS 10D", 5000, 5000},  {"Canon EOS-1D", 0x6400, 100},    {"PowerShot", 227, 227}};
  for (const auto& c : cases) {
    EXPECT_EQ(Applied(c.model, canon_tag::kFocalLength, 4, {{1, c.word}}).focalLength, c.length) << c.model;
  }
  EXPECT_EQ(Applied("Canon EOS 10D", canon_tag::kFocalLength, 3, {{1, 50}}).focalLength, 0);
  ExifData known;
  known.focalLength = 7.1;
  Apply(known, canon_tag::kFocalLength, 4, {});
  EXPECT_EQ(known.focalLength, 7.1) << "a word of 0 says nothing";
}

TEST(CanonNumbers, BodyNumbersAndNames) {
  struct Case {
    std::string model;
    std::uint32_t value;
    std::string text;
  };
  const Case cases[] = {{"Canon EOS D30", 0x12340005, "123400005"},
                        {"CANON EOS D30", 0x00010002, "000100002"},
                        {"Canon EOS-1D", 1234, "001234"},
                        {"Canon EOS-1DS", 12345678, "12345678"},
                        {"Canon EOS-1D Mark III", 500292, "0000500292"},
                        {"Canon EOS 10D", 3000000000, "3000000000"}};
  for (const auto& c : cases) {
    ExifData data;
    data.model = c.model;
    ApplyCanonLong(data, canon_tag::kBodyNumber, c.value);
    EXPECT_EQ(data.bodySerial, c.text);
  }
  ExifData data;
  data.owner = "Somebody";
  ApplyCanonString(data, canon_tag::kFirmware, "Alpha");
  EXPECT_EQ(data.firmware, "");
  ApplyCanonString(data, canon_tag::kFirmware, "Firmware Version 1.03D ");
  ApplyCanonString(data, canon_tag::kFirmware, "Firmware 2");
  EXPECT_EQ(data.firmware, "Firmware Version 1.03");
  ApplyCanonString(data, canon_tag::kOwner, "");
  EXPECT_EQ(data.owner, "Somebody");
  ApplyCanonString(data, canon_tag::kOwner, "A. Photographer");
  EXPECT_EQ(data.owner, "A. Photographer");
}

TEST(CanonNumbers, ColoursAndStitching) {
  ExifData data;
  ApplyCanonLong(data, canon_tag::kColorTemperature, 5200);
  EXPECT_EQ(data.whiteBalance, "");
  data.whiteBalance = "Color temp";
  ApplyCanonLong(data, canon_tag::kColorTemperature, 5200);
  EXPECT_EQ(data.whiteBalance, "Color temp=5200K");
  ApplyCanonLong(data, canon_tag::kColorSpace, 2);
  EXPECT_EQ(data.colorSpace, "AdobeRGB");
  ApplyCanonLong(data, canon_tag::kColorSpace, 1);
  ApplyCanonLong(data, canon_tag::kColorSpace, 65535);
  EXPECT_EQ(data.colorSpace, "sRGB");
  EXPECT_EQ(Applied("", canon_tag::kAfInformation, 24, {{22, 8}}).stitchShot, 8);
  EXPECT_EQ(Applied("", canon_tag::kAfInformation, 23, {{22, 8}}).stitchShot, 0);
}

TEST(CanonShot, WhiteBalanceAndFocusPoints) {
  const std::pair<int, std::string> balances[] = {{0, "Auto"},           {9, "Color temp"}, {10, "Unknown"},
                                                  {14, "Fluorescent-H"}, {16, "Custom2"},   {17, "Unknown"}};
  for (const auto& [code, word] : balances) {
    EXPECT_EQ(Applied("", canon_tag::kShotInformation, 8, {{7, code}}).whiteBalance, word);
  }
  const std::pair<int, std::string> points[] = {
      {0x3000, ""}, {0x3002, "[Center]"}, {0x3005, "[Left + Right]"}, {0x3007, "[Left + Center + Right]"}};
  for (const auto& [code, point] : points) {
    const auto data = Applied("", canon_tag::kShotInformation, 15, {{14, code}});
    EXPECT_EQ(data.focusPoint, point);
    EXPECT_EQ(data.focusPointCode, code);
  }
}

TEST(CanonShot, CompensationsInStops) {
  const auto data =
      Applied("Canon EOS 10D", canon_tag::kShotInformation, 18, {{6, 0xfff0}, {15, 0xffe0}, {16, 2}, {17, 0x8001}});
  EXPECT_EQ(data.exposureCompensation, -0.5);
  EXPECT_EQ(data.flashCompensation, -1);
  EXPECT_EQ(data.aebShot, 2);
  EXPECT_EQ(data.aebCompensation, (0x8001 - 65536) / 32.0);
  EXPECT_EQ(Applied("Canon EOS-1D", canon_tag::kShotInformation, 16, {{15, 0xe0ff}}).flashCompensation, -1);
  EXPECT_EQ(Applied("Canon EOS-1D", canon_tag::kShotInformation, 16, {{15, 0xffe0}}).flashCompensation, -1);
  EXPECT_EQ(Applied("Canon EOS 10D", canon_tag::kShotInformation, 16, {{15, 0xe0ff}}).flashCompensation,
            (0xe0ff - 65536) / 32.0);
}

TEST(CanonShot, FramesOfABurst) {
  const auto frame = [](const std::string& drive, int word) {
    ExifData data;
    data.driveMode = drive;
    Apply(data, canon_tag::kShotInformation, 10, {{9, word}});
    return data.driveMode + " " + std::to_string(data.continuousFrame);
  };
  EXPECT_EQ(frame("Continuous", 3), "Continuous frame: 3 3");
  EXPECT_EQ(frame("Continuous", 0), "Continuous 0");
  EXPECT_EQ(frame("Single frame shooting", 3), "Single frame shooting 0");
}

TEST(CanonShot, DistancesByModel) {
  for (const auto* part : {"EOS D30", "EOS D60", "EOS 10D", "EOS 300D", "EOS Kiss", "EOS DIGITAL REBEL", "PowerShot G3",
                           "PowerShot G5", "PowerShot S400", "PowerShot S50", "DIGITAL IXUS 400"}) {
    const auto data = Applied(std::string("Canon ") + part, canon_tag::kShotInformation, 20, {{19, 142}});
    EXPECT_DOUBLE_EQ(data.subjectDistance, 1.42) << part;
  }
  EXPECT_DOUBLE_EQ(Applied("Canon PowerShot G2", canon_tag::kShotInformation, 20, {{19, 688}}).subjectDistance, 0.688);
  EXPECT_EQ(Applied("Canon EOS D30", canon_tag::kShotInformation, 19, {}).subjectDistance, 0);
  ExifData known;
  known.subjectDistance = 0.01;
  Apply(known, canon_tag::kShotInformation, 20, {{19, 142}});
  EXPECT_EQ(known.subjectDistance, 0.01);
}

const std::string kHeading = "Custom Functions:", kDefaults = kHeading + "\nDefault settings";

TEST(CanonFunctions, OfThreeModelsHaveALineForAWord) {
  const auto text = [](const char* model, std::size_t count, const Words& words) {
    return Applied(model, canon_tag::kCustomFunctions, count, words).customFunctions;
  };
  for (const auto* model : {"Canon EOS 10D", "Canon EOS D30", "Canon EOS D60"}) {
    EXPECT_EQ(text(model, 18, {}), kDefaults);
    const auto one = text(model, 3, {{1, 0x0101}}), both = text(model, 18, {{1, 0x0101}, {2, 0x0201}});
    EXPECT_TRUE(both.starts_with(one) && both.size() > one.size() && one != kDefaults) << both;
  }
  EXPECT_EQ(text("Canon EOS 10D", 18, {{8, 0x0806}}), kDefaults) << "a value without a line";
  EXPECT_EQ(text("Canon EOS 10D", 18, {{12, 0x0c03}}), kHeading + "\nCFn 12: Mirror lockup: Enable");
  EXPECT_EQ(text("Canon EOS D30", 18, {{11, 0x0b02}}), kHeading + "\nCFn 11: Menu button return position: Previous");
  for (const auto* model : {"Canon EOS 300D DIGITAL", "Canon EOS 10D Digital", "Canon EOS 20D"}) {
    EXPECT_EQ(text(model, 18, {{1, 1}}), "") << model;
  }
}

TEST(CanonFunctions, ThoseOfTheEos1DInEitherByteOrder) {
  const auto textOf = [](std::size_t word, int value, bool swapped, std::size_t count = 22) {
    Words words;
    for (std::size_t i = 1; i < count; ++i) {
      // The first has the opposite sense: without a line its bit is set.
      const int low = i == word ? value : i == 1 ? 1 : 0, function = static_cast<int>(i) - 1;
      words.emplace_back(i, swapped ? low << 8 | function : function << 8 | low);
    }
    return Applied("Canon EOS-1D", canon_tag::kEos1DCustomFunctions, count, words).customFunctions;
  };
  EXPECT_EQ(textOf(3, 1, true), kHeading + "\nCFn 2: No exposure without CF card");
  EXPECT_EQ(textOf(0, 0, false), kDefaults);
  const std::string dials = "\nCFn 11: AF point selection: horizontal=FEL + Main dial, vertical=FEL + Quick dial";
  EXPECT_EQ(textOf(12, 3, false), kHeading + dials + dials) << "once for either dial";
  EXPECT_EQ(textOf(3, 1, false, 21), kDefaults) << "an array of another size";
  EXPECT_EQ(textOf(3, 1, false, 23), kDefaults);
}

}  // namespace
}  // namespace ml::metadata
