#include "options/raw_options.h"

#include <gtest/gtest.h>

namespace ml::options {
namespace {

TEST(RawOptions, DefaultsOfSettingsAndEngineAgree) {
  // Where no settings are stored, both sides' defaults have to say the same.
  EXPECT_EQ(RawConversionSettingsOf({}), rawconvert::RawConversionSettings{});
  EXPECT_EQ(RawDialogValuesOf({}), rawconvert::RawDialogValues{});
}

TEST(RawOptions, ValuesComeBack) {
  rawconvert::RawConversionSettings given{.method = rawconvert::Method::Combined,
                                          .gamma = 1.5,
                                          .levelsStyle = rawconvert::LevelsStyle::Auto,
                                          .resizeUnits = rawconvert::ResizeUnits::Inches,
                                          .sharpenMethod = rawconvert::SharpenMethod::HqStyle,
                                          .usmAmount = 0.25,
                                          .colourSpace = 2};
  settings::Settings stored;
  PutRawConversionSettings(given, stored);
  EXPECT_EQ(RawConversionSettingsOf(stored), given);
  stored.raw.method = 7;
  EXPECT_EQ(RawConversionSettingsOf(stored).method, rawconvert::Method::Normal);
}

}  // namespace
}  // namespace ml::options
