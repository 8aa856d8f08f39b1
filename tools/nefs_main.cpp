#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "support/nef_builder.h"
#include "write_file.h"

/// Fills a directory with NEF files as each camera stores them, in the sizes of their sensors, and with what is to be
/// read from each as a PGM file beside it:
///   marrowlantern-nefs DIRECTORY
namespace ml::test {
namespace {

struct Case {
  const char* name;
  NefFile nef;
};

const Case kCases[] = {
    {"d1h_packed", {.model = "NIKON D1H", .width = 2012, .height = 1324, .strips = 67}},
    {"d1h_coded",
     {.model = "NIKON D1H",
      .width = 2012,
      .height = 1324,
      .storage = NefStorage::Lossy,
      .place = NefCurvePlace::BareNote}},
    {"d2h_packed", {.model = "NIKON D2H", .width = 2496, .height = 1648}},
    {"d2h_coded",
     {.model = "NIKON D2H",
      .width = 2496,
      .height = 1648,
      .storage = NefStorage::Lossy,
      .place = NefCurvePlace::HeadedNote}},
    {"d2h_split",
     {.model = "NIKON D2H",
      .width = 2496,
      .height = 1648,
      .storage = NefStorage::LossyWithSplit,
      .place = NefCurvePlace::HeadedNote}},
    {"d2h_lossless",
     {.model = "NIKON D2H",
      .width = 2496,
      .height = 1648,
      .storage = NefStorage::Lossless,
      .place = NefCurvePlace::HeadedNote}},
    {"d100_tens",
     {.model = "NIKON D100", .width = 3040, .height = 2024, .statedWidth = 3034, .storage = NefStorage::PackedTens}},
    {"d100_coded",
     {.model = "NIKON D100",
      .width = 3034,
      .height = 2024,
      .storage = NefStorage::Lossy,
      .place = NefCurvePlace::HeadedNote}},
    {"d100_fixed", {.model = "NIKON D100", .width = 3034, .height = 2024, .storage = NefStorage::Lossy}},
    {"d1x_packed", {.model = "NIKON D1X", .width = 4024, .height = 1324}},
    {"d1x_coded",
     {.model = "NIKON D1X",
      .width = 4024,
      .height = 1324,
      .storage = NefStorage::Lossy,
      .place = NefCurvePlace::BareNote}},
    {"d1x_fixed", {.model = "NIKON D1X", .width = 4024, .height = 1324, .storage = NefStorage::Lossy}},
    {"e5700_packed", {.model = "E5700", .width = 2576, .height = 1924}},
    {"e5700_first", {.model = "E5700", .width = 2576, .height = 1924, .inFirstDirectory = true}},
};

std::string Pgm(const std::vector<std::uint16_t>& samples, std::size_t width) {
  ByteString out(Endian::Big);
  out.Text("P5\n" + std::to_string(width) + " " + std::to_string(samples.size() / width) + "\n65535\n");
  for (const auto sample : samples) out.Short(sample);
  return out.Take();
}

void Make(const std::filesystem::path& directory) {
  std::filesystem::create_directories(directory);
  for (const auto& [name, nef] : kCases) {
    for (const auto order : {Endian::Big, Endian::Little}) {
      auto ordered = nef;
      ordered.order = order;
      const auto built = BuildNef(ordered, NefScene(nef.width, nef.height, 1));
      const auto path = directory / (std::string(name) + (order == Endian::Big ? "_big" : "_little"));
      WriteFile(path.string() + ".nef", built.file);
      WriteFile(path.string() + ".expected.pgm", Pgm(built.samples, static_cast<std::size_t>(built.width)));
    }
  }
}

}  // namespace
}  // namespace ml::test

int main(int argc, char** argv) {
  try {
    if (argc != 2) throw std::runtime_error("usage: marrowlantern-nefs DIRECTORY");
    ml::test::Make(argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "marrowlantern-nefs: %s\n", error.what());
    return 1;
  }
}
