#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "metadata/canon/canon_model.h"
#include "metadata/exif_data.h"
#include "metadata/sample_reference.h"

namespace ml::metadata {
namespace {

using nlohmann::json;

/// A note in the wrong byte order, which the reference repairs.
constexpr std::string_view kDamaged = "jpeg/canon-powershot-s330.jpg";

double AsItIs(double value, const ExifData&, const json&) { return value; }

struct Row {
  const char* key;
  double (*ours)(const ExifData&);
  /// What ours is by the number of the reference.
  double (*wanted)(double value, const ExifData& data, const json& raw) = AsItIs;
  double tolerance = 0;
};

double InWholeMillimetres(double value, const ExifData&, const json&) { return std::floor(value); }
/// Only a PowerShot's word is divided by the unit.
double FocalWord(double value, const ExifData& data, const json& raw) {
  return IsPowerShot(data.model) ? std::floor(value) : value * raw.value("Canon:FocalUnits", 1);
}

constexpr double kThird = 0.05;  ///< the reference counts in thirds, the words in 32nds
const Row kRows[] = {
    {"Canon:SelfTimer", [](const ExifData& d) { return d.selfTimer * 10; }},
    {"Canon:ExposureCompensation", [](const ExifData& d) { return d.exposureCompensation; }, AsItIs, kThird},
    {"Canon:FlashExposureComp", [](const ExifData& d) { return d.flashCompensation; }, AsItIs, kThird},
    {"Canon:AEBBracketValue", [](const ExifData& d) { return d.aebCompensation; }, AsItIs, kThird},
    {"Canon:AutoExposureBracketing", [](const ExifData& d) { return double(d.aebShot); }},
    {"Canon:MinFocalLength", [](const ExifData& d) { return d.lensMinFocal; }, InWholeMillimetres},
    {"Canon:MaxFocalLength", [](const ExifData& d) { return d.lensMaxFocal; }, InWholeMillimetres},
    {"Canon:FocalLength", [](const ExifData& d) { return d.focalLength; }, FocalWord},
    {"Canon:SequenceNumber", [](const ExifData& d) { return double(d.continuousFrame); }},
    {"CanonRaw:FileNumber", [](const ExifData& d) { return double(d.imageNumber); }},
    {"CanonRaw:ImageWidth", [](const ExifData& d) { return double(d.imageWidth); }},
    {"CanonRaw:ImageHeight", [](const ExifData& d) { return double(d.imageHeight); }},
};

struct TextRow {
  const char* keys[2];
  std::string ExifData::*field;
};
const TextRow kTexts[] = {{{"IFD0:Model", "CanonRaw:Model"}, &ExifData::model},
                          {{"Canon:OwnerName", "CanonRaw:OwnerName"}, &ExifData::owner}};

bool IsCanon(const json& raw) { return raw.contains("Canon:MacroMode"); }

TEST(SampleCanon, NumbersAgreeWithTheReference) {
  int compared = 0;
  const auto reference = test::SampleReference();
  for (const auto& [name, record] : reference.items()) {
    const auto& raw = record.at("raw");
    if (!IsCanon(raw) || name == kDamaged) continue;
    const ExifData data(*test::SamplesDir() + "/" + name);
    for (const auto& row : kRows) {
      if (!raw.contains(row.key) || !raw.at(row.key).is_number()) continue;
      ++compared;
      EXPECT_NEAR(row.ours(data), row.wanted(raw.at(row.key).get<double>(), data, raw), row.tolerance + 1e-9)
          << name << " " << row.key;
    }
    const auto& shot = record.at("words").at("4 shotInformation");
    EXPECT_EQ(data.focusPointCode, shot.at("14").get<int>()) << name;
  }
  EXPECT_TRUE(!test::SamplesDir() || compared > 150) << compared;
}

TEST(SampleCanon, NamesAgreeWithTheReference) {
  const auto reference = test::SampleReference();
  for (const auto& [name, record] : reference.items()) {
    const auto& raw = record.at("raw");
    // A text of four bytes in a block counts as absent.
    if (!IsCanon(raw) || name == kDamaged || name == "jpeg/big-endian-short-ascii.jpg") continue;
    const ExifData data(*test::SamplesDir() + "/" + name);
    for (const auto& row : kTexts) {
      for (const auto* key : row.keys) {
        EXPECT_EQ(data.*row.field, raw.value(key, data.*row.field)) << name << key;
      }
    }
    for (const auto* key : {"Canon:SerialNumber", "CanonRaw:SerialNumber"}) {
      if (!raw.contains(key) || data.model == "Canon EOS D30") continue;  // in two parts there
      EXPECT_EQ(std::stoll(data.bodySerial), raw.at(key).get<long long>()) << name;
    }
    const auto firmware = raw.value("Canon:CanonFirmwareVersion", raw.value("CanonRaw:CanonFirmwareVersion", ""));
    EXPECT_TRUE(firmware.starts_with(data.firmware)) << name << data.firmware;
    EXPECT_EQ(data.firmware.empty(), firmware.find_first_of("0123456789") == std::string::npos) << name;
  }
}

}  // namespace
}  // namespace ml::metadata
