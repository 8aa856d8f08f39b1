#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "metadata/exif_data.h"
#include "platform/text.h"
#include "support/temp_dir.h"

/// Notes of real cameras against the reading of another program.
namespace ml::metadata {
namespace {

using nlohmann::json;

/// A value of the reference as the camera's words, or as the number at `index` of a list.
std::string Words(const json& value) { return std::string(platform::TrimRight(value.get<std::string>())); }
std::string NumberAt(const json& value, int index) {
  std::istringstream list(value.get<std::string>());
  std::string number;
  for (int i = 0; i <= index; ++i) list >> number;
  return number;
}

/// What this program shows of a tag of Nikon's against what the reference says of it.
void CompareNikon(const ExifData& data, const json& raw) {
  const auto texts = {std::pair{"Nikon:Quality", data.imageQuality}, {"Nikon:FocusMode", data.afMode}};
  for (const auto& [tag, text] : texts) EXPECT_EQ(text, Words(raw.at(tag))) << tag;
  EXPECT_TRUE(data.whiteBalance.starts_with(Words(raw.at("Nikon:WhiteBalance")))) << data.whiteBalance;
  if (const auto iso = NumberAt(raw.at("Nikon:ISO"), 1); iso != "0") {
    EXPECT_EQ(data.iso, iso);
  }
  if (!raw.contains("Nikon:Lens")) return;
  EXPECT_EQ(data.lensMinFocal, std::stod(NumberAt(raw.at("Nikon:Lens"), 0)));
  EXPECT_EQ(data.lensMaxFocal, std::stod(NumberAt(raw.at("Nikon:Lens"), 1)));
}

TEST(SampleNotes, NikonAgreesWithTheReference) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP() << "no real files here";
  std::ifstream file(*samples + "/expected.json");
  const auto reference = json::parse(file);
  int compared = 0;
  for (const auto& [name, record] : reference.items()) {
    const auto& raw = record.at("raw");
    // Kept: the note of the oldest kind gives nothing, and a JPEG under a raw file's name is none.
    if (!raw.contains("Nikon:FocusMode") || name == "nef/jpeg-named-nef.nef") continue;
    SCOPED_TRACE(name);
    CompareNikon(ExifData(*samples + "/" + name), raw);
    ++compared;
  }
  EXPECT_GT(compared, 7);
}

TEST(SampleNotes, OtherMakers) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP() << "no real files here";
  const auto read = [&](const char* name) { return ExifData(*samples + "/jpeg/" + name); };
  const auto olympus = read("olympus-c960.jpg");
  EXPECT_EQ(olympus.imageQuality, "HQ");
  EXPECT_EQ(olympus.flash, "Off");
  const auto s2 = read("fujifilm-finepix-s2pro.jpg");
  EXPECT_EQ(s2.imageQuality, "NORMAL");
  EXPECT_EQ(s2.exposureMode, "Aperture priority");
  EXPECT_EQ(s2.whiteBalance, "Daylight");
  EXPECT_EQ(s2.sharpness, "Normal");
  EXPECT_EQ(read("fujifilm-finepix2400zoom.jpg").flash, "Red-eye reduction");
  const auto casio = read("casio-qv-3000ex.jpg");
  EXPECT_EQ(casio.imageQuality, "Fine");
  EXPECT_EQ(casio.afMode, "Auto AF");
  EXPECT_EQ(casio.flash, "Red Eye Reduction");
  EXPECT_EQ(casio.whiteBalance, "Auto");
  EXPECT_EQ(read("casio-qv-r51.jpg").imageQuality, "") << "of the other kind";
}

}  // namespace
}  // namespace ml::metadata
