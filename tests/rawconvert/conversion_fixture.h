#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rawconvert/batch/batch_conversion.h"
#include "rawconvert/raw_developer.h"
#include "support/camera_raw.h"
#include "support/fake_developer.h"
#include "support/fakes.h"
#include "support/temp_dir.h"

namespace ml::rawconvert {

/// Notes what a conversion tells.
class ToldProgress final : public platform::Progress {
 public:
  std::vector<int> percents;
  std::vector<std::string> texts, secondTexts;
  std::vector<std::pair<int, int>> positions;

  void percent(int value) override { percents.push_back(value); }
  void text(const std::string& line) override { texts.push_back(line); }
  void secondText(const std::string& line) override { secondTexts.push_back(line); }
  void picture(std::span<const std::byte>, int, int) override {}
  void position(int index, int count) override { positions.emplace_back(index, count); }
};

/// Conversions by developers of the test, in a directory of their own.
class ConversionTest : public ::testing::Test {
 protected:
  test::TempDir dir;
  test::FakeDevelopment* sdk = new test::FakeDevelopment;     ///< of `developer`
  test::FakeCameraImage* camera = new test::FakeCameraImage;  ///< of `developer`
  RawDeveloper developer{std::unique_ptr<DevelopmentSdk>(sdk), std::unique_ptr<CameraImageSdk>(camera)};
  ToldProgress progress;
  test::ScriptedInteraction ask;
  test::FakeClock clock;
  std::stop_source stop;
  RawConversionSettings settings = [] {
    RawConversionSettings quiet;
    quiet.sameWhiteBalance = 0;
    return quiet;
  }();
};

}  // namespace ml::rawconvert
