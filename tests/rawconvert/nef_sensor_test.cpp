#include "rawconvert/nef/nef_sensor.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>

#include "platform/errors.h"
#include "rawconvert/nef/sensor_pgm.h"
#include "support/nef_builder.h"
#include "support/temp_dir.h"
#include "support/told_progress.h"
#include "support/truncation_sweep.h"

namespace ml::rawconvert {
namespace {

using test::Endian;
using test::NefCurvePlace;
using test::NefStorage;

NefSensor Read(const std::string& file) {
  return ReadNefSensor(metadata::MemorySource(std::as_bytes(std::span(file))), "a.nef");
}

std::string FailureOf(const std::string& file) {
  try {
    Read(file);
    return "none";
  } catch (const platform::UserError& error) {
    return error.what();
  }
}

struct Case {
  const char* name;
  test::NefFile nef;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

class StoredSamples : public testing::TestWithParam<Case> {};

TEST_P(StoredSamples, AreReadAsTheyWereWritten) {
  for (const auto order : {Endian::Big, Endian::Little}) {
    auto nef = GetParam().nef;
    nef.order = order;
    const auto built = test::BuildNef(nef, test::NefScene(nef.width, nef.height, 3));
    const auto sensor = Read(built.file);
    EXPECT_EQ(sensor.width, built.width);
    EXPECT_EQ(sensor.height, nef.height);
    EXPECT_EQ(sensor.samples, built.samples);
  }
}

const Case kCases[] = {
    {"D1Strips", {.model = "nikon d1", .strips = 13}},
    {"D1HPacked", {}},
    {"D1HOldNote", {.storage = NefStorage::Lossy, .place = NefCurvePlace::BareNote}},
    {"D1HFixed", {.storage = NefStorage::Lossy}},
    {"D1XPacked", {.model = "NIKON D1X", .width = 92}},
    {"D1XFixed", {.model = "NIKON D1X", .width = 92, .storage = NefStorage::Lossy}},
    {"D2HPacked", {.model = "NIKON D2H"}},
    {"D2HHeadedNote", {.model = "NIKON D2H", .storage = NefStorage::Lossy, .place = NefCurvePlace::HeadedNote}},
    {"D2HSplit", {.model = "NIKON D2H", .storage = NefStorage::LossyWithSplit, .place = NefCurvePlace::HeadedNote}},
    {"D2HLossless", {.model = "NIKON D2H", .storage = NefStorage::Lossless, .place = NefCurvePlace::HeadedNote}},
    {"D100Narrow", {.model = "NIKON D100", .width = 3034, .height = 8, .storage = NefStorage::Lossy}},
    {"D100Note",
     {.model = "NIKON D100",
      .width = 3034,
      .height = 8,
      .storage = NefStorage::Lossy,
      .place = NefCurvePlace::HeadedNote}},
    {"D100Tens",
     {.model = "NIKON D100", .width = 3040, .height = 8, .statedWidth = 3034, .storage = NefStorage::PackedTens}},
    {"D100Wide", {.model = "NIKON D100", .width = 3037, .height = 8}},
    {"D100WideStatedNarrow", {.model = "NIKON D100", .width = 3037, .height = 8, .statedWidth = 3034}},
    {"OddSizes", {.width = 47, .height = 27, .storage = NefStorage::Lossy}},
    {"E5700", {.model = "E5700", .height = 27}},
    {"E5700FirstDirectory", {.model = "E5700", .inFirstDirectory = true}},
};

INSTANTIATE_TEST_SUITE_P(Cameras, StoredSamples, testing::ValuesIn(kCases), [](const auto& c) { return c.param.name; });

/// The strips of a camera's file; the sums were taken from what another decoder writes.
TEST(NefSensorTest, ReadsTheFileOfACamera) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP() << "no camera files";
  const auto sensor = ReadNefSensor(*samples + "/nef/nikon-d1.nef");
  ASSERT_EQ(std::pair(sensor.width, sensor.height), std::pair(2012, 1324));
  std::uint64_t sum = 0, weighted = 0;
  for (std::size_t i = 0; i < sensor.samples.size(); ++i) {
    sum += sensor.samples[i];
    weighted += sensor.samples[i] * (i % 65521);
  }
  EXPECT_EQ(sum, 1261062932U);
  EXPECT_EQ(weighted, 41032899653923U);
}

TEST(NefSensorTest, NamesTheFileItCannotRead) {
  const auto scene = test::NefScene(46, 26, 3);
  const test::NefFile packed, coded{.storage = NefStorage::Lossy};
  const auto packedFile = test::BuildNef(packed, scene).file, codedFile = test::BuildNef(coded, scene).file;
  auto damaged = codedFile;
  damaged.replace(damaged.size() - 700, 300, 300, '\xff');
  auto curveless = codedFile;
  curveless.replace(0xDA0 + 8, 2, 2, '\0');
  const std::string cut = "a.nef: the file ends before its raw data", large = "a.nef: the sizes that the file states",
                    broken = "a.nef: the raw data are damaged", layout = "a.nef: the raw data are stored in a way",
                    camera = "a.nef: is no raw file of a camera";
  const struct {
    std::string file, sentence;
  } cases[] = {
      {packedFile.substr(0, packedFile.size() - 1), cut},
      {codedFile.substr(0, codedFile.size() - 40), cut},
      {packedFile.substr(0, 100), cut},
      {test::BuildNef({.height = 26, .statedWidth = 29000}, scene).file, cut},
      {test::BuildNef({.height = 26, .statedWidth = 30001}, scene).file, large},
      {test::BuildNef({.height = 26, .statedWidth = 2}, scene).file, large},
      {damaged, broken},
      {curveless, broken},
      {test::BuildNef({.bitsPerSample = 14}, scene).file, layout},
      {test::BuildNef({.model = "NIKON D70"}, scene).file, camera},
      {"II*", camera},
      {"", camera},
  };
  for (const auto& [file, sentence] : cases)
    EXPECT_TRUE(FailureOf(file).starts_with(sentence)) << FailureOf(file) << sentence;
}

TEST(NefSensorTest, NeverTakesACutFileForOneOfAnUnknownKind) {
  const test::NefFile files[] = {
      {.width = 24, .height = 12, .storage = NefStorage::LossyWithSplit, .place = NefCurvePlace::BareNote},
      {.width = 24, .height = 12, .storage = NefStorage::LossyWithSplit, .place = NefCurvePlace::HeadedNote},
      {.model = "nikon d1", .width = 24, .height = 12, .strips = 3}};
  for (const auto& nef : files) {
    const auto file = test::BuildNef(nef, test::NefScene(24, 12, 3)).file;
    test::SweepPrefixes(file, 1, [&](const auto& prefix) {
      if (prefix.size() == file.size()) return;
      const auto sentence = FailureOf({prefix.begin(), prefix.end()});
      EXPECT_NE(sentence, "none") << prefix.size();
      EXPECT_EQ(sentence.find("not known"), std::string::npos) << prefix.size();
    });
  }
}

TEST(NefSensorTest, ReachesAFifthOfTheWork) {
  test::ToldProgress progress;
  test::TempDir directory;
  const auto path = directory.Write("a.nef", test::BuildNef({.height = 40}, test::NefScene(46, 40, 3)).file);
  ReadNefSensor(path, {.progress = &progress});
  std::vector<int> all(20);
  std::iota(all.begin(), all.end(), 0);
  EXPECT_EQ(progress.percents, all);
}

TEST(NefSensorTest, StopsWhenAsked) {
  const auto stop = std::make_unique<std::stop_source>();  // on the stack g++ 12 takes it for uninitialised
  stop->request_stop();
  const auto file = test::BuildNef({}, test::NefScene(46, 26, 3)).file;
  const metadata::MemorySource source(std::as_bytes(std::span(file)));
  EXPECT_THROW(ReadNefSensor(source, "a.nef", {.stop = stop->get_token()}), platform::Cancelled);
}

TEST(SensorPgmTest, PutsTheHigherByteFirst) {
  const NefSensor sensor{*FindNefCamera("NIKON D1"), 2, 1, {0x0102, 0xfffe}};
  const auto file = EncodePgm(sensor);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(file.data()), file.size()), "P5\n2 1\n65535\n\x01\x02\xff\xfe");
}

}  // namespace
}  // namespace ml::rawconvert
