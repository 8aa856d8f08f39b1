#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <thread>

#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/scale.h"
#include "metadata/byte_source.h"
#include "metadata/crw_file.h"
#include "metadata/exif_data.h"
#include "platform/errors.h"
#include "platform/readable_file.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/libraw/as_shot_look.h"
#include "rawconvert/picture_collection.h"
#include "rawconvert/raw_developer.h"
#include "support/temp_dir.h"
#include "support/told_progress.h"

namespace ml::rawconvert {
namespace {

std::vector<std::string> SampleCrws() {
  std::vector<std::string> paths;
  if (const auto samples = test::SamplesDir()) {
    for (const auto* name : {"canon-eos-d30.crw", "canon-powershot-g2-0304.crw", "canon-powershot-s40-0112.crw"}) {
      paths.push_back(*samples + "/crw/" + name);
    }
  }
  return paths;
}

/// The one whose camera records no white balance.
std::vector<std::string> OneCrw() {
  auto paths = SampleCrws();
  paths.resize(std::min<std::size_t>(paths.size(), 1));
  return paths;
}

imaging::PixelBuffer Preview(const std::string& path) {
  const platform::ReadableFile file(path);
  const metadata::FileSource source(file);
  const auto range = metadata::FindCrwPreview(source);
  return imaging::DecodeJpeg(
             source, range->position, [](int, int) { return 8; }, imaging::PixelOrder::Rgb)
      .pixels;
}

/// The mean difference of samples, 0..255, at a size at which sharpness does not count.
double MeanDifference(const imaging::PixelBuffer& a, const imaging::PixelBuffer& b) {
  const auto one = imaging::ScaleAverage(a, 96, 64), other = imaging::ScaleAverage(b, 96, 64);
  double sum = 0;
  for (std::size_t i = 0; i < one.data.size(); ++i) {
    sum += std::abs(std::to_integer<int>(one.data[i]) - std::to_integer<int>(other.data[i]));
  }
  return sum / static_cast<double>(one.data.size());
}

TEST(DevelopedSamples, LookLikeTheCamerasOwnPictures) {
  for (const auto& path : SampleCrws()) {
    const auto before = test::ReadAll(path);
    const auto developed = MakeRawDeveloper()->Develop(path);
    const metadata::ExifData exif(path);
    EXPECT_EQ(developed.width, exif.imageWidth) << path;
    EXPECT_EQ(developed.height, exif.imageHeight) << path;
    EXPECT_LT(MeanDifference(developed, Preview(path)), 6) << path;
    EXPECT_EQ(test::ReadAll(path), before);
  }
}

TEST(DevelopedSamples, WhatIsBlownIsWhiteInLinearToo) {
  for (const auto& path : OneCrw()) {
    const auto developer = MakeRawDeveloper();
    PictureCollection pictures(path, developer->Development());
    auto params = AsShotParams();
    params.SetLinear(true);
    const auto linear = imaging::HighBytes(pictures.Develop(params, {}, {}));
    const auto* lamp = linear.Row(50) + std::ptrdiff_t{1030} * 3;
    for (int c = 0; c < 3; ++c) EXPECT_GE(std::to_integer<int>(lamp[c]), 250) << c;
  }
}

TEST(DevelopedSamples, AWhiteBalanceIsRepeatedByWhatItLeft) {
  for (const auto& path : SampleCrws()) {
    const auto developer = MakeRawDeveloper();
    PictureCollection pictures(path, developer->Development());
    auto params = AsShotParams();
    params.SetWhiteBalance(-1);
    params.SetCustomPoint({700, 500});
    const auto first = pictures.Develop(params, {.scale = DevelopScale::Small}, {});
    EXPECT_NEAR(first.width, pictures.Size().width / 2, 1);
    params.SetCustomPoint({10, 10});
    PictureCollection others(path, developer->Development());
    const auto again = others.Develop(params, {.scale = DevelopScale::Small}, {});
    EXPECT_LT(MeanDifference(first, again), 0.1) << path;
    params.ClearComputed();
    params.SetCustomPoint({700, 500});
    const auto measured = pictures.Develop(params, {.scale = DevelopScale::Small}, {});
    EXPECT_LT(MeanDifference(first, measured), 0.1) << path;
    params.SetWhiteBalance(3);
    const auto tungsten = pictures.Develop(params, {.scale = DevelopScale::Small}, {});
    EXPECT_GT(MeanDifference(first, tungsten), 1) << path;
  }
}

TEST(DevelopedSamples, BothEnginesGiveTheSamePictureAndProgress) {
  for (const auto& path : OneCrw()) {
    const auto developer = MakeRawDeveloper();
    const auto model = metadata::ExifData(path).model;
    CameraImage image(path, developer->CameraImages());
    const CameraImageSettings warm{.whiteBalance = 9, .colourTemperature = 4000, .linear = true};
    test::ToldProgress progress;
    const auto one = imaging::HighBytes(image.Develop(warm, model, true, {.progress = &progress}));
    EXPECT_TRUE(std::ranges::is_sorted(progress.percents));
    EXPECT_GT(progress.percents.size(), 5U);
    EXPECT_EQ(progress.percents.back(), 100);

    PictureCollection pictures(path, developer->Development());
    auto params = AsShotParams();
    params.SetLinear(true);
    params.SetWhiteBalance(-1);
    params.SetCoefficients(developer->CameraImages().coefficients);
    const auto other = imaging::HighBytes(pictures.Develop(params, {}, {}));
    EXPECT_LT(MeanDifference(one, other), 0.1) << path;
    const CameraImageSettings cool{.whiteBalance = 9, .colourTemperature = 8000, .linear = true};
    EXPECT_GT(MeanDifference(one, image.Develop(cool, model, false, {})), 1) << path;
  }
}

TEST(DevelopedSamples, ACancelIsActedOnWhereverItComes) {
  for (const auto& path : OneCrw()) {
    const auto developer = MakeRawDeveloper();
    PictureCollection pictures(path, developer->Development());
    for (const int wait : {0, 20, 60}) {
      std::stop_source stop;
      const std::jthread canceller([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(wait));
        stop.request_stop();
      });
      auto params = AsShotParams();
      try {
        pictures.Develop(params, {}, {.stop = stop.get_token()});
      } catch (const platform::Cancelled&) {
      }
    }
    auto params = AsShotParams();
    const auto whole = pictures.Develop(params, {.scale = DevelopScale::Small}, {});
    EXPECT_LT(MeanDifference(whole, Preview(path)), 7) << path;  // the file is opened anew where it had to be
  }
}

/// The sentence of a file that cannot be developed.
std::string Complaint(const std::string& path) {
  try {
    const auto developer = MakeRawDeveloper();
    PictureCollection pictures(path, developer->Development());
    if (!pictures.HasPicture()) return "no picture";
    auto params = AsShotParams();
    pictures.Develop(params, {}, {});
    return "developed";
  } catch (const DevelopError& error) {
    return RawFileComplaint(error.Code(), "X");
  }
}

TEST(DevelopedSamples, AFileThatWasExpectedIsDevelopedAsAnyOther) {
  const auto paths = SampleCrws();
  if (paths.empty()) GTEST_SKIP() << "no samples";
  const test::TempDir dir;
  const auto bytes = test::ReadAll(paths[1]).value();
  const std::string whole = dir.Write("whole.crw", bytes);
  const std::string cut = dir.Write("cut.crw", bytes.substr(0, bytes.size() / 2));
  const auto develop = [](DevelopmentSdk& sdk, const std::string& path) {
    auto params = AsShotParams();
    return sdk.Open(path)->Develop(params, {.scale = DevelopScale::Small}, {}).data;
  };
  const auto developer = MakeRawDeveloper(), other = MakeRawDeveloper();
  auto& sdk = developer->Development();
  const auto plain = develop(other->Development(), whole);
  for (const auto& [expected, opened] : std::vector<std::pair<std::string, std::string>>{
           {whole, whole}, {cut, whole}, {dir / "none.crw", whole}, {whole, cut}, {cut, cut}}) {
    sdk.Expect(expected, {});
    EXPECT_EQ(develop(sdk, whole), plain) << "before " << opened;
    if (opened == whole) {
      EXPECT_EQ(develop(sdk, opened), plain) << "after " << expected;
    } else {
      EXPECT_THROW(develop(sdk, opened), DevelopError) << "after " << expected;
    }
  }
  sdk.Expect(dir / "none.crw", {});
  EXPECT_EQ(develop(sdk, whole), plain);
  EXPECT_EQ(sdk.Open(dir / "none.crw"), nullptr);
  std::stop_source stop;
  stop.request_stop();
  sdk.Expect(whole, stop.get_token());
  EXPECT_EQ(develop(sdk, whole), plain);
  EXPECT_EQ(develop(sdk, whole), plain) << "after a stop";
}

TEST(DamagedRaws, HaveTheirSentence) {
  const std::string invalid = "Raw file is invalid and cannot be converted\n";
  const test::TempDir dir;
  EXPECT_EQ(Complaint(dir / "missing.crw"), "no picture");
  EXPECT_EQ(Complaint(dir.Write("empty.crw", "")), invalid);
  EXPECT_EQ(Complaint(dir.Write("text.crw", std::string(5000, 'x'))), invalid);
  const auto samples = test::SamplesDir();
  if (!samples) return;
  for (const auto& entry : std::filesystem::directory_iterator(*samples + "/damaged")) {
    const auto copy = dir.Write("damaged.crw", *test::ReadAll(entry.path()));
    const auto complaint = Complaint(copy);
    const bool otherFormat = entry.path().extension() != ".crw" && complaint == "X raw file format not supported\n";
    EXPECT_TRUE(complaint == invalid || otherFormat) << entry.path() << complaint;
  }
  for (const auto& path : SampleCrws()) {
    const auto whole = *test::ReadAll(path);
    for (const std::size_t size : {whole.size() / 20, whole.size() / 2, whole.size() - 4}) {
      EXPECT_EQ(Complaint(dir.Write("cut.crw", whole.substr(0, size))), invalid) << path << size;
    }
    // Sensor data that end early, the heap's directory still at the end.
    auto holed = whole;
    std::fill(holed.begin() + static_cast<std::ptrdiff_t>(whole.size() / 4),
              holed.begin() + static_cast<std::ptrdiff_t>(whole.size() * 3 / 4), '\xFF');
    EXPECT_EQ(Complaint(dir.Write("holed.crw", holed)), invalid) << path;
  }
}

}  // namespace
}  // namespace ml::rawconvert
