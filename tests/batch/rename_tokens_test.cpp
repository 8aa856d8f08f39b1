#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "batch/new_names.h"
#include "batch/rename_tokens.h"
#include "metadata/sample_reference.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "support/small_files.h"
#include "support/temp_dir.h"

namespace ml::batch {
namespace {

constexpr std::int64_t kTime = 1065220205;  // 2003:10:04 00:30:05 in Berlin

RenameImage Image(std::string name) {
  return {.name = std::move(name),
          .facts = {.focalLength = 28.6,
                    .aperture = "2.8",
                    .shutterSpeed = "1/250",
                    .iso = "400",
                    .bodySerial = "0520802345",
                    .model = "Canon EOS 10D",
                    .imageNumber = 1234567,
                    .continuousFrame = 3,
                    .stitchShot = 8,
                    .shootingTime = kTime}};
}

std::string Name(const std::string& format, const RenameImage& image, std::int64_t first = 1, std::size_t digits = 4) {
  return GetNewName(std::vector{image}, 0, {.format = format, .digits = digits, .firstNumber = first});
}

TEST(GetNewName, EveryTokenHasItsValue) {
  const std::pair<std::string, std::string> cases[] = {
      {"%F", "29"},          {"%A", "2.8"},     {"%s", "250"},          {"%i", "400"},
      {"%c", "0520802345"},  {"%C", "029"},     {"%T", "10D"},          {"%v", "10D"},
      {"%q-%r", "123-4567"}, {"%N", "1234567"}, {"%e", "03"},           {"%f", "IMG"},
      {"%x", "Jpg"},         {"%n", "0001"},    {"%o", "IMG_1234"},     {"%[2-3]", "MG"},
      {"%[-4]", "1234"},     {"%[5]", "1"},     {"%[9-12]", ""},        {"%[5-]%[1]", "1234I"},
      {"%[2-3", "%[2-3"},    {"%d", "031004"},  {"%Y%y%m", "20030310"}, {"%b%a", "OctSat"},
      {"%D", "04"},          {"%W", "39"},      {"%t", "003005"},       {"%H%I%M%S", "00123005"},
      {"%u%U", "%u%U"},      {"%%n", "%0001"},  // no token escapes another one
      {"%z%", "%z%"},        {"", ""},
  };
  for (const auto& [format, value] : cases) EXPECT_EQ(Name(format, Image("IMG_1234.Jpg")), value) << format;
}

TEST(GetNewName, ValuesDependOnTheImage) {
  struct Case {
    std::string format, name;
    void (*change)(RenameFacts& facts);
    std::string value;
  };
  const Case cases[] = {
      {"%s", "a.jpg", [](RenameFacts& f) { f.shutterSpeed = "2"; }, "2"},
      {"%C", "a.jpg", [](RenameFacts& f) { f.bodySerial = "4294967295"; }, "FFF"},
      {"%C", "a.jpg", [](RenameFacts& f) { f.bodySerial = ""; }, "000"},
      {"%q-%r_%N", "a.jpg", [](RenameFacts& f) { f.imageNumber = 0; }, "000-0001_0000001"},
      {"%e", "a.jpg", [](RenameFacts& f) { f.continuousFrame = 0; }, "00"},
      {"%f", "IMG.CRW", [](RenameFacts&) {}, "CRW"},
      {"%f", "a.avi", [](RenameFacts&) {}, "MVI"},
      {"%f", "a.NEF", [](RenameFacts&) {}, "NEF"},
      {"%f", "a.jpg", [](RenameFacts& f) { f.model = "Canon PowerShot G2"; }, "STH"},
      {"%f", "a.avi", [](RenameFacts& f) { f.model = "PowerShot"; }, "STH"},
      {"%f", "a.crw", [](RenameFacts& f) { f.model = "PowerShot"; }, "CRW"},
      {"%f", "a.jpg", [](RenameFacts& f) { f.model.clear(), f.stitchShot = 27; }, "IMG"},
      // A value is open to the tokens behind its own, and only to those.
      {"%c", "a.jpg", [](RenameFacts& f) { f.bodySerial = "%o%A"; }, "a%A"},
      // Pieces are looked for in the style alone.
      {"%o%[1]", "%[2].jpg", [](RenameFacts&) {}, "%[2]%"},
      {"%[2-]", "\xC3\xA4\xC3\xB6x.jpg", [](RenameFacts&) {}, "\xC3\xB6x"},
  };
  for (const auto& c : cases) {
    auto image = Image(c.name);
    c.change(image.facts);
    EXPECT_EQ(Name(c.format, image), c.value) << c.format << " of " << c.name;
  }
}

TEST(GetNewName, NumbersArePaddedNeverCutAndWrap) {
  EXPECT_EQ(Name("%n", Image("a.jpg"), 12345, 4), "12345");
  EXPECT_EQ(Name("%n", Image("a.jpg"), 5, 7), "0000005");
  EXPECT_EQ(Name("%n", Image("a.jpg"), 10'000'002, 1), "2");
  EXPECT_EQ(Name("%n", Image("a.jpg"), -3, 1), "0");
  EXPECT_THROW(GetNewName(std::vector{Image("a.jpg")}, 1, {}), platform::UserError);
}

TEST(ModelNames, AreCutToTheirNumber) {
  const std::array<std::string, 3> cases[] = {
      {"Canon EOS-1D Mark II", "EOS-1D", "1D"},
      {"Canon EOS 10D", "10D", "10D"},
      {"NIKON D100", "D100", "D100"},
      {"DSC-F717", "DSC-F717", "F717"},
      {"Canon DIGITAL IXUS 400", "400", "400"},
      {"Canon EOS Kiss", "Canon", "Canon"},
      {"C2100UZ a", "C2100UZ", "C2100UZ"},
      {"X//:1?", "X_1_", "X_1_"},
      {"", "", ""},
  };
  for (const auto& [model, name, number] : cases) {
    EXPECT_EQ(ShortModelName(model), name);
    EXPECT_EQ(ModelNumber(model), number);
  }
}

/// What the record of any kind of file tells comes into the name as it is.
TEST(GetNewName, TellsOfFilesOfEveryKind) {
  const test::TempDir dir;
  platform::NoProgress progress;
  int dated = 0;
  for (const auto* files : {&test::SmallFiles(), &test::MakerNoteFiles()}) {
    for (const auto& file : *files) {
      const auto path = dir.Write(file.name + "/" + file.file, file.content);
      const metadata::ExifData data(path);
      const auto images = ReadRenameImages({path}, {}, progress, {});
      const auto name = [&](const char* format) { return Name(format, images.front()); };
      EXPECT_EQ(name("%o.%x"), file.file) << file.name;
      EXPECT_EQ(name("%A|%i|%c"), data.aperture + "|" + data.iso + "|" + data.bodySerial) << file.name;
      EXPECT_EQ(images.front().isCanonRaw, data.isEos1DRaw || platform::EndsWithNoCase(path, ".crw")) << file.name;
      if (!data.dateRecorded) continue;
      ++dated;
      EXPECT_EQ(name("%Y:%m:%D %H:%M:%S"), data.dateTime) << file.name;
    }
  }
  EXPECT_GT(dated, 10);
}

/// Against a reading by other means.
TEST(GetNewName, AgreesWithTheReferenceOverRealFiles) {
  int compared = 0;
  const auto reference = test::SampleReference();
  platform::NoProgress progress;
  for (const auto& [path, record] : reference.items()) {
    const auto& raw = record.at("raw");
    // Elsewhere the reference tells more than shooting data.
    if (!path.starts_with("jpeg/") && !path.starts_with("crw/") && !path.starts_with("nef/")) continue;
    // A kind that its name denies, and notes whose places are wrong, which the reference repairs or leaves out.
    if (path == "nef/jpeg-named-nef.nef" || path == "jpeg/canon-powershot-s330.jpg") continue;
    const auto images = ReadRenameImages({*test::SamplesDir() + "/" + path}, {}, progress, {});
    const auto expect = [&](const char* format, const std::string& value) {
      ++compared;
      EXPECT_EQ(Name(format, images.front()), value) << path << " " << format;
    };
    const bool hasThm = reference.contains(path.substr(0, path.rfind('.')) + ".thm");  // dated a second later
    for (const char* key : {"ExifIFD:DateTimeOriginal", "CanonRaw:DateTimeOriginal"}) {
      const auto date = raw.contains(key) && !hasThm ? raw.at(key).get<std::string>() : "";
      if (date.size() >= 19 && date > "1970" && date[4] == ':') expect("%Y:%m:%D %H:%M:%S", date.substr(0, 19));
    }
    for (const char* key : {"Canon:FileNumber", "CanonRaw:FileNumber"}) {
      const auto number = raw.contains(key) ? raw.at(key).get<std::int64_t>() : 0;
      if (number > 1'000'000) expect("%q%r", std::to_string(number));
    }
    if (raw.contains("ExifIFD:FocalLength") && !raw.contains("Canon:MacroMode")) {
      expect("%F", std::to_string(std::lrint(raw.at("ExifIFD:FocalLength").get<double>())));
    }
  }
  EXPECT_TRUE(reference.empty() || compared > 70) << compared;
}

}  // namespace
}  // namespace ml::batch
