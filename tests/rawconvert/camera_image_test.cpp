#include "rawconvert/camera_image.h"

#include <gtest/gtest.h>

#include "platform/errors.h"
#include "rawconvert/develop_error.h"
#include "support/fake_developer.h"
#include "support/refusal.h"

namespace ml::rawconvert {
namespace {

using Lines = std::vector<std::string>;

std::string Joined(const Lines& lines) {
  std::string all;
  for (const auto& line : lines) all += line + "; ";
  return all;
}

TEST(CameraImage, CallsTheEngineInItsOrder) {
  test::FakeCameraImage sdk;
  CameraImageHost host(sdk);
  {
    CameraImage image("/a.tif", host);
    const CameraImageSettings settings{.digitalGain = 33,
                                       .colourMatrix = 2,
                                       .edgeObject = 5,
                                       .falseColourFilter = false,
                                       .falseResolutionFilter = true};
    const auto pixels = image.Develop(settings, "Canon EOS-1Ds", true, {});
    EXPECT_EQ(pixels.bytesPerSample, 2);
    image.StoreParameters();
  }
  EXPECT_EQ(
      Joined(sdk.calls),
      "start 5; source; item 258; open; picture; reset; release; width; height; gain 20; false colour 0; linear 0; "
      "matrix 2; edge 3 5; contrast 255; depth 255; enhance 255; hue 255; colour space 255; false resolution 1; white "
      "balance 255:; "
      "develop 8 48; coefficients; flash; close; close source; finish; ");
  EXPECT_EQ(host.coefficients, sdk.computed);
}

TEST(CameraImage, WhiteBalanceGoesOutWithItsData) {
  struct Case {
    int code;
    bool known;
    const char* line;
  };
  for (const auto& c :
       std::initializer_list<Case>{{kAsShot, false, "white balance 255:"},
                                   {-1, false, "white balance 32768: 44 1 0 0 7 0 0 0"},
                                   {9, false, "white balance 9: 136 19 0 0"},
                                   {4095, false, "white balance 255:"},  // nothing to reuse yet
                                   {4095, true, "white balance 4095: 0 0 0 64 0 0 128 63 0 0 192 63 0 0 128 63"},
                                   {3, true, "white balance 3:"}}) {
    test::FakeCameraImage sdk;
    CameraImageHost host(sdk);
    if (c.known) host.coefficients = sdk.computed;
    const CameraImageSettings settings{.whiteBalance = c.code, .customX = 300, .customY = 7, .colourTemperature = 5000};
    CameraImage("/a.tif", host).Develop(settings, "Canon EOS-1D", false, {});
    EXPECT_NE(std::ranges::find(sdk.calls, c.line), sdk.calls.end()) << c.line;
    EXPECT_EQ(std::ranges::count_if(sdk.calls, [](auto& line) { return line.starts_with("false resolution"); }), 0);
  }
}

TEST(CameraImage, TheModelDecidesTheDepth) {
  struct Case {
    const char* model;
    bool linear, wish16;
    const char* call;
    int bytes;
  };
  for (const auto& c : std::initializer_list<Case>{{"Canon EOS-1Ds", true, false, "develop 8 48", 1},
                                                   {"Canon EOS-1D", true, false, "develop 7 24", 1},
                                                   {"Canon PowerShot G1", false, true, "develop 7 24", 1},
                                                   {"Canon EOS-1D", false, true, "develop 8 48", 2}}) {
    test::FakeCameraImage sdk;
    CameraImageHost host(sdk);
    CameraImage image("/a.tif", host);
    EXPECT_EQ(image.Develop({.linear = c.linear}, c.model, c.wish16, {}).bytesPerSample, c.bytes) << c.model;
    EXPECT_NE(std::ranges::find(sdk.calls, c.call), sdk.calls.end()) << c.model;
  }
}

TEST(CameraImage, SearchesVersionAndTypeAndRemembersTheVersion) {
  test::FakeCameraImage sdk;
  sdk.worksFromVersion = 7;
  sdk.type = 2;
  CameraImageHost host(sdk);
  for (int i = 0; i < 2; ++i) CameraImage("/a.tif", host);
  const Lines once = {"item 258", "item 0", "item 1", "item 2", "open", "close", "close source", "finish"};
  Lines expected = {"start 5", "start 6", "start 7", "source"};
  expected.insert(expected.end(), once.begin(), once.end());
  expected.insert(expected.end(), {"start 7", "source"});
  expected.insert(expected.end(), once.begin(), once.end());
  EXPECT_EQ(sdk.calls, expected);
}

TEST(CameraImage, TheEngineRunsFromTheFirstUserToTheLast) {
  test::FakeCameraImage sdk;
  CameraImageHost host(sdk);
  {
    const CameraImage one("/a.tif", host);
    { const CameraImage two("/b.tif", host); }
  }
  EXPECT_EQ(sdk.calls, (Lines{"start 5", "source", "item 258", "open", "item 258", "open", "close", "close",
                              "close source", "finish"}));
}

TEST(CameraImage, FailuresHaveTheirSentences) {
  struct Case {
    const char *path, *failing, *error;
  };
  for (const auto& c : std::initializer_list<Case>{
           {"\\\\host\\a.tif", "",
            "Due to a limitation in Canon's SDK it\nisn't possible to open Canon EOS 1D and\n1Ds raw files on network "
            "drives unless\nthey are mapped to drive letters."},
           {"/a.tif", "start", "Unable to open image"},
           {"/a.tif", "source", "Unable to open image"},
           {"/a.tif", "item", "Unable to open image"},
           {"/a.tif", "open", "Unable to open image"}}) {
    test::FakeCameraImage sdk;
    sdk.failing = c.failing;
    CameraImageHost host(sdk);
    EXPECT_EQ(test::Refusal([&] { CameraImage(c.path, host); }), c.error);
    const auto count = [&](const char* line) { return std::ranges::count(sdk.calls, line); };
    if (c.failing == std::string("start")) continue;
    EXPECT_EQ(count("start 5"), count("finish")) << c.failing;
  }
}

TEST(CameraImage, ResultCodesAreThrown) {
  test::FakeCameraImage sdk;
  CameraImageHost host(sdk);
  CameraImage image("/a.tif", host);
  sdk.failing = "gain";
  EXPECT_NO_THROW(image.Develop({}, "Canon EOS-1Ds", false, {}));  // results of parameters are ignored ..
  sdk.failing = "false resolution";
  EXPECT_THROW(image.Develop({}, "Canon EOS-1Ds", false, {}), CameraImageError);  // .. but for this one
  sdk.failing = "develop";
  sdk.failure = 0x10000 + 0x2D;
  try {
    image.Develop({}, "Canon EOS-1D", false, {});
    FAIL();
  } catch (const CameraImageError& error) {
    EXPECT_STREQ(error.what(), "cdFILE_DATA_CORRUPT");
  }
  std::stop_source stop;
  stop.request_stop();
  sdk.failing = "";
  EXPECT_THROW(image.Develop({}, "Canon EOS-1D", false, {.stop = stop.get_token()}), platform::Cancelled);
}

}  // namespace
}  // namespace ml::rawconvert
