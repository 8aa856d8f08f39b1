#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "rawconvert/batch/batch_conversion.h"
#include "rawconvert/raw_developer.h"
#include "support/camera_raw.h"
#include "support/fake_developer.h"
#include "support/fakes.h"
#include "support/temp_dir.h"
#include "support/told_progress.h"

namespace ml::rawconvert {

/// Conversions by developers of the test, in a directory of their own.
class ConversionTest : public ::testing::Test {
 protected:
  test::TempDir dir;
  test::FakeDevelopment* sdk = new test::FakeDevelopment;     ///< of `developer`
  test::FakeCameraImage* camera = new test::FakeCameraImage;  ///< of `developer`
  RawDeveloper developer{std::unique_ptr<DevelopmentSdk>(sdk), std::unique_ptr<CameraImageSdk>(camera)};
  test::ToldProgress progress;
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
